#pragma once

#include <vector>

#include "platform/linux/ui/XErrors.h"
#include "platform/linux/ui/XTypes.h"

class QString;

namespace morla::linux {

/// What Qt offers no way to ask for, said on Qt's own connection, so that it is heard in order with what Qt says.
/// Main thread; Qt's X11 platform must be running.
class XClient {
 public:
  XClient();

  /// Everything said so far has been done when this returns.
  void synchronise();

  /// Resource name and class: what window lists and tests call the window.
  void setClass(XWindowId window, QString const& name);

  /// The window that has the keyboard; 0 or 1 when none has it.
  [[nodiscard]] XWindowId focus();
  /// Without asking the window manager. Nothing happens when the window is not shown.
  void setFocus(XWindowId window);
  /// Asks the window manager for a managed window to come to the front, now.
  void activate(XWindowId window);

  /// The pixels of the window that exist; nothing else of it is shown or can be clicked.
  void setShape(XWindowId window, std::vector<PixelRect> const& pixels);
  void clearShape(XWindowId window);
  /// The pixels that can be clicked; a click elsewhere goes to what lies below.
  void setClickableShape(XWindowId window, std::vector<PixelRect> const& pixels);
  void clearClickableShape(XWindowId window);

  /// False while another program has the pointer to itself. Ends a grab of our own.
  [[nodiscard]] bool canGrabPointer();

 private:
  enum class Shape { bounding, input };
  void combine(XWindowId window, Shape shape, std::vector<PixelRect> const& pixels);
  void remove(XWindowId window, Shape shape);

  _XDisplay* display_;
  XErrorGuard errors_;
};

}  // namespace morla::linux
