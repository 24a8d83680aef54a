#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "base/Subscription.h"
#include "platform/Events.h"

/// Keys, as every back end reports them: in macOS's numbers, because the settings and the names of keys are made of
/// them.
namespace morla::platform {

enum class KeyEventType { down, up, flagsChanged };

/// Which modifiers are held, with the bits of AppKit's NSEvent.ModifierFlags. Others than these may be set as well.
struct ModifierFlags {
  std::uint64_t bits = 0;
  friend constexpr bool operator==(ModifierFlags, ModifierFlags) = default;
  friend constexpr ModifierFlags operator|(ModifierFlags a, ModifierFlags b) { return {a.bits | b.bits}; }
  [[nodiscard]] constexpr bool contains(ModifierFlags other) const { return (bits & other.bits) != 0; }
};
inline constexpr ModifierFlags kCapsLockFlag{1U << 16};
inline constexpr ModifierFlags kShiftFlag{1U << 17};
inline constexpr ModifierFlags kControlFlag{1U << 18};
inline constexpr ModifierFlags kOptionFlag{1U << 19};
inline constexpr ModifierFlags kCommandFlag{1U << 20};

struct KeyEvent {
  KeyEventType type = KeyEventType::down;
  std::uint16_t keyCode = 0;  ///< macOS's virtual key code: where the key is, whatever is printed on it
  ModifierFlags modifierFlags;
  /// UTF-8. What the key types in the current layout with Shift alone taken into account; function keys and arrows have
  /// macOS's private-use characters (U+F700 and up). Empty when the key types nothing, and for `flagsChanged`.
  std::string charactersIgnoringModifiers;
  bool isAutoRepeat = false;
};

/// Of keys, for KeyMonitors; the bits are AppKit's as well.
inline constexpr EventMask kKeyDown{0x400};
inline constexpr EventMask kKeyUp{0x800};

/// Nothing for changes of modifiers, which no monitor sees.
[[nodiscard]] constexpr EventMask maskOf(KeyEventType type) {
  switch (type) {
    case KeyEventType::down:
      return kKeyDown;
    case KeyEventType::up:
      return kKeyUp;
    case KeyEventType::flagsChanged:
      break;
  }
  return {};
}

enum class TapDecision {
  pass,
  swallow,  ///< neither the focused application nor a tap that was made earlier sees the event
};

/// Sees every key event of the session before any application does, from its making to its end. While it decides, the
/// keyboard waits: a tap that takes too long is disabled by the system and told so. Main thread.
class EventTap {
 public:
  /// Who decides. Outlives the tap.
  class Callback {
   public:
    virtual ~Callback() = default;
    virtual TapDecision handle(KeyEvent const& event) = 0;
    /// The system has disabled the tap, since a decision took too long or the user asked for it. Events pass it by
    /// until it is enabled again; what was pressed or released meanwhile is never told.
    virtual void tapWasDisabled(EventTap& tap) = 0;
  };

  virtual ~EventTap() = default;
  virtual void enable() = 0;
};

/// The key-downs that a tap may want to swallow: these characters, upper-case, under exactly these of the modifiers
/// Command, Shift, Option and Control. A hint: a system on which a program sees only the keys it asks for asks for
/// these (and reports further ones only while one of these is held); macOS reports every key.
struct WantedKeys {
  std::set<std::string> characters;
  ModifierFlags modifiers;
};

/// Main thread.
class EventTaps {
 public:
  virtual ~EventTaps() = default;
  /// The new tap is enabled, and sees each event before those that were made earlier. None when the user has not
  /// allowed this program to control the computer, or another program has the keys for itself.
  [[nodiscard]] virtual std::unique_ptr<EventTap> makeTap(EventTap::Callback& callback, WantedKeys wanted) = 0;
};

/// Looks at keys without a tap's permission: those that the user types into this program's own windows, which a monitor
/// may consume, and those that go elsewhere, which it can only watch. Modifier keys are not reported. Main thread.
class KeyMonitors {
 public:
  using LocalHandler = std::function<MonitorDecision(KeyEvent const&)>;
  using GlobalHandler = std::function<void(KeyEvent const&)>;
  virtual ~KeyMonitors() = default;

  /// Keys for this program's windows whose kind is in `mask` (kKeyDown, kKeyUp), until the subscription ends; what one
  /// monitor consumes, neither a window nor a later monitor sees.
  [[nodiscard]] virtual Subscription addLocalMonitor(EventMask mask, LocalHandler handler) = 0;
  /// Keys for other programs, also those that some program swallows. Without auto-repeat on some systems.
  [[nodiscard]] virtual Subscription addGlobalMonitor(EventMask mask, GlobalHandler handler) = 0;
};

}  // namespace morla::platform
