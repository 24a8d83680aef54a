#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace morla::linux {

struct XcbDisconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};
/// A reply, an event or an error of xcb.
template <typename T>
using XcbOwned = std::unique_ptr<T, XcbFree>;

/// None when the display named by DISPLAY cannot be opened.
[[nodiscard]] inline XcbConnection connectToX() {
  XcbConnection connection(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
  return connection;
}

/// Of the only screen that today's servers have.
[[nodiscard]] inline xcb_window_t rootOf(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

}  // namespace morla::linux
