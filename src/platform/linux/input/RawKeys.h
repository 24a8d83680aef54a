#pragma once

#include <functional>
#include <memory>

#include "platform/KeyEvents.h"
#include "platform/linux/input/Keymap.h"

class QSocketNotifier;
struct _XDisplay;

namespace morla::linux {

/// Every press and release of a key on this display, wherever it goes and whoever swallows it. Auto-repeats are not
/// told. Sleeps until the server speaks. Main thread; needs Qt's event loop.
class RawKeys {
 public:
  using Observer = std::function<void(platform::KeyEvent const&)>;
  /// None when the display takes no further connection or has no XInput 2.2 (X.Org of 2012) or XKB.
  [[nodiscard]] static std::unique_ptr<RawKeys> open(Observer observer);
  ~RawKeys();
  RawKeys(RawKeys const&) = delete;
  RawKeys& operator=(RawKeys const&) = delete;

  [[nodiscard]] Keymap const& keymap() const { return *keymap_; }
  /// The X window that gets the keys; 0 or 1 when none has them for itself. Asks the server.
  [[nodiscard]] unsigned long focusWindow();
  /// Whether a finger is on it. Asks the server.
  [[nodiscard]] bool isDown(xcb_keycode_t key);

 private:
  RawKeys(_XDisplay* display, int inputOpcode, int xkbEvent, std::shared_ptr<Keymap const> keymap, Observer observer);
  void handleEvents();
  void handleRaw(int type, int keycode);

  _XDisplay* display_;
  int inputOpcode_;
  int xkbEvent_;
  std::shared_ptr<Keymap const> keymap_;
  Observer observer_;
  std::uint16_t state_ = 0;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace morla::linux
