#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/system/FrontTracker.h"
#include "platform/linux/system/XConnection.h"

namespace morla::linux {

/// A window of an application, not a window manager's frame.
struct ClientWindow {
  xcb_window_t window = XCB_WINDOW_NONE;
  WindowOwner owner;
  std::string windowInstance;
};

/// The windows that the window manager manages; without one, the mapped windows of the desktop that a manager would.
/// Knows what it was last told to read. Main thread.
class ClientWindows {
 public:
  explicit ClientWindows(XConnection& x);

  struct Changes {
    std::vector<xcb_window_t> come;
    std::vector<xcb_window_t> gone;
  };
  /// Reads the list again, and watches the new windows for focus and properties.
  Changes refresh();
  /// Reads again who `window` belongs to.
  void reread(xcb_window_t window);
  /// Looks again for a window manager.
  void findManager();

  [[nodiscard]] bool hasManager() const { return managerCheck_ != XCB_WINDOW_NONE; }
  /// The window that lives as long as the window manager.
  [[nodiscard]] xcb_window_t managerCheck() const { return managerCheck_; }

  [[nodiscard]] std::map<xcb_window_t, ClientWindow> const& all() const { return windows_; }
  [[nodiscard]] ClientWindow const* find(xcb_window_t window) const;
  /// The client that has the keyboard, or whose inner window has it; none for other windows.
  [[nodiscard]] ClientWindow const* focused();
  /// The window of `owner` that lies topmost.
  [[nodiscard]] std::optional<xcb_window_t> topmostOf(WindowOwner const& owner);

  void activate(xcb_window_t window);
  /// Gives `window` the keyboard and leaves the stacking as it is. `time` is the server's, for clients that ask for it.
  void giveFocus(xcb_window_t window, xcb_timestamp_t time);

 private:
  [[nodiscard]] ClientWindow read(xcb_window_t window);
  [[nodiscard]] std::vector<xcb_window_t> unmanagedStack();
  /// The client that is `window` or holds it.
  [[nodiscard]] ClientWindow const* around(xcb_window_t window) const;

  XConnection& x_;
  xcb_window_t managerCheck_ = XCB_WINDOW_NONE;
  std::map<xcb_window_t, ClientWindow> windows_;
};

}  // namespace morla::linux
