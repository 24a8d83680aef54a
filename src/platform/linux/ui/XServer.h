#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/linux/ui/XErrors.h"
#include "platform/linux/ui/XTypes.h"

class QSocketNotifier;

namespace morla::linux {

/// A connection of our own to the X server that Qt draws on, to watch the desktop without disturbing what Qt asked the
/// server to tell it. Sleeps until the server speaks. Main thread; Qt's X11 platform must be running.
class XServer {
 public:
  /// None when the server takes no further connection.
  static std::unique_ptr<XServer> open(MainLoop& loop);
  ~XServer();
  XServer(XServer const&) = delete;
  XServer& operator=(XServer const&) = delete;

  [[nodiscard]] PixelPoint pointer();

  /// `prefix` and the screen's number make the name of a selection that stands for a role on this screen: the
  /// compositor, the tray.
  [[nodiscard]] bool hasSelectionOwner(std::string const& prefix);
  [[nodiscard]] Subscription onSelectionOwnerDidChange(std::string const& prefix, std::function<void()> observer);

  /// Bottom to top, what stands directly on the desktop: frames, panels, menus, and windows that are not shown.
  [[nodiscard]] std::vector<XWindowId> stack();
  /// True when it can be seen, and the window manager manages it or what is inside it.
  [[nodiscard]] bool isShownAndManaged(XWindowId topLevel);
  /// What stands on the desktop for the window that the window manager calls active; 0 when none is.
  [[nodiscard]] XWindowId activeTopLevel();
  /// After windows came, went, moved or were restacked, or another became active; once for all that the server said
  /// together.
  [[nodiscard]] Subscription onDesktopDidChange(std::function<void()> observer) {
    return desktopDidChange_.add(std::move(observer));
  }

  void raise(XWindowId window);
  void putBelow(XWindowId window, XWindowId sibling);

 private:
  XServer(MainLoop& loop, _XDisplay* display);
  [[nodiscard]] unsigned long atom(std::string const& name);
  [[nodiscard]] bool hasState(XWindowId window);
  void handleEvents();
  void handle(_XEvent const& event, bool& desktopChanged);
  /// An answer may have brought events along, which wakes nobody any more.
  void handleEventsLater();

  MainLoop& loop_;
  _XDisplay* display_;
  XErrorGuard errors_;
  XWindowId root_;
  int selectionEvent_ = -1;
  bool isHandlingLater_ = false;
  std::map<std::string, unsigned long> atoms_;
  std::map<unsigned long, ObserverList<>> selections_;
  ObserverList<> desktopDidChange_;
  std::unique_ptr<QSocketNotifier> notifier_;
  Lifetime life_;
};

}  // namespace morla::linux
