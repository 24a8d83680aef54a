#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <set>

#include "platform/linux/input/Keymap.h"

namespace morla::linux {

/// Keys that are down since before their presses would have come here: what comes of them is an auto-repeat, which a
/// core event does not say. Nothing is asked of the server while there are none. Any one thread.
class HeldKeys {
 public:
  /// For passive grabs of keys on this connection. None when the server has no XInput 2.2 (X.Org of 2012).
  [[nodiscard]] static std::optional<HeldKeys> start(xcb_connection_t* connection);

  /// The modifiers have changed, and other keys are wanted: those that are down by now have been passed by. Waits for
  /// the server.
  void refresh(Keymap const& keymap);
  /// These are down as well.
  void add(std::set<xcb_keycode_t> const& keys);
  /// To be shown every event that is no core event of a key.
  void note(xcb_generic_event_t const& event);

  [[nodiscard]] bool isRepeat(xcb_key_press_event_t const& press) const;

 private:
  HeldKeys(xcb_connection_t* connection, std::uint8_t opcode) : connection_(connection), opcode_(opcode) {}
  void update();

  xcb_connection_t* connection_;
  std::uint8_t opcode_;
  std::set<xcb_keycode_t> keys_;
  std::uint16_t asked_ =
      0;                 ///< the number of the last question, as the connection counts; events have such numbers too
  bool isTold_ = false;  ///< the server announces each press on this connection, whoever gets it
};

}  // namespace morla::linux
