#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace morla::linux {

/// An application as its windows show it: a process, or, where the process is not known (0), a window class.
struct WindowOwner {
  std::int64_t processIdentifier = 0;
  std::string windowClass;

  friend bool operator==(WindowOwner const& a, WindowOwner const& b) { return a.key() == b.key(); }
  friend bool operator<(WindowOwner const& a, WindowOwner const& b) { return a.key() < b.key(); }

 private:
  [[nodiscard]] std::pair<std::int64_t, std::string> key() const {
    return {processIdentifier, processIdentifier == 0 ? windowClass : std::string()};
  }
};

/// Decides which application is frontmost from what happens to windows. Knows no window system.
///
/// The front goes to the application whose managed window becomes active or gets the focus. No window at all (the
/// desktop between two activations, a panel of ours that has the keyboard) and this program's own windows leave it
/// where it is; this program comes to the front by `activateSelf` alone. It is an event that moves the front, never a
/// state: a window that has been active all along does not take it back from this program.
class FrontTracker {
 public:
  using WindowId = std::uint32_t;
  struct Window {
    WindowId id = 0;
    WindowOwner owner;
  };

  explicit FrontTracker(WindowOwner self) : self_(std::move(self)) {}

  /// What the window manager calls the active window; nothing when that is none.
  void activeWindowIs(std::optional<Window> const& window);
  void focusEntered(Window const& window);
  void focusLeft(WindowId window);
  void activateSelf() { front_ = self_; }
  /// `window` was asked to come to the front, and has been the active one all along.
  void activated(Window const& window) { bringToFront(window); }
  /// The application in front has no window any more.
  void loseFront() { front_.reset(); }
  void windowVanished(WindowId window);

  [[nodiscard]] std::optional<WindowOwner> const& front() const { return front_; }
  /// The managed window that has the keyboard.
  [[nodiscard]] std::optional<Window> const& focused() const { return focused_; }
  [[nodiscard]] std::optional<WindowId> lastFocused(WindowOwner const& owner) const;

 private:
  void bringToFront(Window const& window);

  WindowOwner self_;
  std::optional<WindowOwner> front_;
  std::optional<Window> focused_;
  WindowId active_ = 0;
  std::map<WindowOwner, WindowId> lastFocused_;
};

}  // namespace morla::linux
