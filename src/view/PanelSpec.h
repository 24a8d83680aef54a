#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/Geometry.h"

namespace morla::view {

/// Bits of a panel's style, with the window system's own numbers (AppKit's NSWindowStyleMask).
struct StyleMask {
  std::uint64_t bits = 0;
  friend constexpr bool operator==(StyleMask, StyleMask) = default;
  friend constexpr StyleMask operator|(StyleMask a, StyleMask b) { return {a.bits | b.bits}; }
  [[nodiscard]] constexpr bool contains(StyleMask other) const { return (bits & other.bits) == other.bits; }
};
inline constexpr StyleMask kBorderless{0};
inline constexpr StyleMask kTitled{0x1};
inline constexpr StyleMask kClosable{0x2};
inline constexpr StyleMask kNonactivatingPanel{0x80};
/// The content also takes the place of the title bar, whose close button stands on top of it.
inline constexpr StyleMask kFullSizeContentView{0x8000};

/// Bits of a panel's behaviour among spaces (AppKit's NSWindowCollectionBehavior).
struct CollectionBehaviour {
  std::uint64_t bits = 0;
  friend constexpr bool operator==(CollectionBehaviour, CollectionBehaviour) = default;
  friend constexpr CollectionBehaviour operator|(CollectionBehaviour a, CollectionBehaviour b) {
    return {a.bits | b.bits};
  }
};
inline constexpr CollectionBehaviour kCanJoinAllSpaces{0x1};
inline constexpr CollectionBehaviour kFullScreenAuxiliary{0x100};

/// How high a panel stands above the others (AppKit's NSWindow.Level).
enum class Level : int { normal = 0, floating = 3, status = 25 };

/// The height of a title bar, in points (AppKit's, for a window without a toolbar).
inline constexpr double kTitleBarHeight = 28;

/// What a panel is, before it holds anything. Buffered, created at once.
struct PanelSpec {
  /// How the trace calls it: its class, or what tells it from others of its class.
  std::string name;
  /// In the title bar and for accessibility.
  std::string title;
  /// Without the title bar, which stands above it; with a full-size content view it is the panel's frame.
  BottomLeftRect contentRect;
  StyleMask styleMask = kBorderless;
  Level level = Level::normal;
  CollectionBehaviour collectionBehaviour;
  bool isOpaque = true;
  bool hasShadow = true;
  bool isMovableByBackground = false;
  bool hidesOnDeactivate = true;
  /// The title bar shows neither its own background nor the title.
  bool hasTransparentTitleBar = false;
};

/// What a panel receives, as far as behaviours ask.
enum class PanelEvent { leftMouseDown, leftMouseUp, rightMouseDown, rightMouseUp, otherMouseDown, otherMouseUp };

/// What a panel's class decides for itself; the native window asks it. Main thread.
class PanelBehaviour {
 public:
  virtual ~PanelBehaviour() = default;
  [[nodiscard]] virtual bool canBecomeKey() const = 0;
  [[nodiscard]] virtual bool canBecomeMain() const = 0;
  /// An event of the panel before its controls have it; `passOn` gives it to them. Clicks in a menu that a control has
  /// opened are the menu's own and do not come here.
  virtual void sendEvent(PanelEvent /*event*/, std::function<void()> const& passOn) { passOn(); }
};

}  // namespace morla::view
