#pragma once

/// The few types of Xlib that headers here need; Xlib's own header stays out of them, since its macros (None, Bool,
/// KeyPress, ...) break Qt's.
struct _XDisplay;
union _XEvent;

namespace morla::linux {

using XWindowId = unsigned long;

/// Device pixels from the top-left corner of the X screen or of a window. Never leaves this folder.
struct PixelPoint {
  int x = 0;
  int y = 0;
};

struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(PixelRect const&, PixelRect const&) = default;
};

}  // namespace morla::linux
