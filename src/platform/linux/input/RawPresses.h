#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace morla::linux {

/// Tells a press from an auto-repeat, which look alike in a core event: the server announces each press just before it
/// hands it to anybody, but no repeat. Not on a connection that has the whole keyboard for itself: to that one it
/// announces nothing. Any one thread.
class RawPresses {
 public:
  /// From now on presses are announced here. None when the server has no XInput 2.2 (X.Org of 2012).
  [[nodiscard]] static std::optional<RawPresses> start(xcb_connection_t* connection);

  /// To be shown every event that is no core event of a key.
  void note(xcb_generic_event_t const& event);

  [[nodiscard]] bool isRepeat(xcb_key_press_event_t const& press) const {
    return press.detail != key_ || press.time != time_;
  }

 private:
  explicit RawPresses(std::uint8_t opcode) : opcode_(opcode) {}

  std::uint8_t opcode_;
  // Of the last press; the server gives it and the core event one time.
  std::uint32_t key_ = 0;
  xcb_timestamp_t time_ = 0;
};

}  // namespace morla::linux
