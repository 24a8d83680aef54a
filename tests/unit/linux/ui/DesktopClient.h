#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Geometry.h"
#include "platform/linux/ui/XTypes.h"

class QSocketNotifier;

namespace morla::linux {

/// Another program on the same desktop, as far as the X server knows: it has windows of its own, sees what everybody
/// can see, and moves the mouse. Everything it says has happened when a call returns. Device pixels.
class DesktopClient {
 public:
  DesktopClient();
  ~DesktopClient();
  DesktopClient(DesktopClient const&) = delete;
  DesktopClient& operator=(DesktopClient const&) = delete;

  /// Among the windows directly on the desktop; 0 when there is none of that name.
  [[nodiscard]] XWindowId find(std::string const& name);
  [[nodiscard]] std::string className(XWindowId window);
  [[nodiscard]] bool isOverrideRedirect(XWindowId window);
  [[nodiscard]] bool isShown(XWindowId window);
  [[nodiscard]] PixelRect frame(XWindowId window);
  /// True when the first stands above the second, wherever the window manager has put them.
  [[nodiscard]] bool isAbove(XWindowId upper, XWindowId lower);
  [[nodiscard]] XWindowId topLevelAt(PixelPoint place);
  /// What a click would reach, inside whatever it stands in.
  [[nodiscard]] XWindowId innermostAt(PixelPoint place);
  [[nodiscard]] XWindowId focus();
  [[nodiscard]] XWindowId activeWindow();
  /// False for the whole rectangle that every window has unless it asked for another shape.
  [[nodiscard]] bool hasShape(XWindowId window);

  enum class Form { normal, fullScreen };
  /// A window that the window manager manages; waits until it has the focus.
  XWindowId openWindow(std::string const& name, Form form, PixelRect frame);
  void closeWindow(XWindowId window);
  void activate(XWindowId window);

  void movePointer(PixelPoint to);
  void press(unsigned button);
  void release(unsigned button);
  void click(PixelPoint at, unsigned button);
  void typeEscape();

  /// False when the pointer could not be had.
  bool grabPointer();
  void ungrabPointer();

 private:
  [[nodiscard]] XWindowId topLevelOf(XWindowId window);
  [[nodiscard]] std::optional<unsigned long> property(XWindowId window, char const* name);
  void sendToRoot(XWindowId window, char const* type, long first, long second);
  void drain();

  _XDisplay* display_;
  XWindowId root_;
  /// Wakes the test's loop whenever something happens on the desktop.
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace morla::linux
