#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace morla::linux {

/// What the server tells about the keyboard as a whole.
struct KeyboardNotice {
  /// Another layout, another keyboard, or keys that mean something else.
  bool isNewKeymap = false;
  /// The modifiers and the layout (bits 13 and 14) from now on, where they have changed.
  std::optional<std::uint16_t> state;
};

/// The X keyboard extension on one connection. Any thread.
class Xkb {
 public:
  /// From now on a key that repeats comes up only once, and keys say in which layout they are also when they come by a
  /// grab. None when the server has no such extension.
  [[nodiscard]] static std::optional<Xkb> start(xcb_connection_t* connection);

  /// Asks to be told of new keymaps, and of changes of modifiers and layout.
  static void selectNotices(xcb_connection_t* connection);

  /// Nothing when `event` is no notice of the keyboard.
  [[nodiscard]] std::optional<KeyboardNotice> notice(xcb_generic_event_t const& event) const;

  /// As in KeyboardNotice; asks the server.
  [[nodiscard]] std::uint16_t state(xcb_connection_t* connection) const;

 private:
  explicit Xkb(std::uint8_t firstEvent) : firstEvent_(firstEvent) {}
  std::uint8_t firstEvent_;
};

}  // namespace morla::linux
