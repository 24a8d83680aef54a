#pragma once

#include <cstdint>
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
inline constexpr StyleMask kNonactivatingPanel{0x80};

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

/// What a panel is, before it holds anything. Buffered, created at once.
struct PanelSpec {
  /// How the trace and accessibility call it: its class.
  std::string name;
  BottomLeftRect contentRect;
  StyleMask styleMask = kBorderless;
  Level level = Level::normal;
  CollectionBehaviour collectionBehaviour;
  bool isOpaque = true;
  bool hasShadow = true;
  bool isMovableByBackground = false;
  bool hidesOnDeactivate = true;
};

/// What a panel's class decides for itself; the native window asks it.
class PanelBehaviour {
 public:
  virtual ~PanelBehaviour() = default;
  [[nodiscard]] virtual bool canBecomeKey() const = 0;
  [[nodiscard]] virtual bool canBecomeMain() const = 0;
};

}  // namespace morla::view
