#pragma once

#include <cstdint>
#include <functional>

#include "base/Geometry.h"
#include "base/Subscription.h"

namespace morla::platform {

class Panel;

enum class MouseEventKind { leftDown, leftUp, rightDown, leftDragged };

/// A set of mouse events, with the window system's own bits (AppKit's NSEvent.EventTypeMask: 1 << event type).
struct EventMask {
  std::uint64_t bits = 0;
  friend constexpr bool operator==(EventMask, EventMask) = default;
  friend constexpr EventMask operator|(EventMask a, EventMask b) { return {a.bits | b.bits}; }
  [[nodiscard]] constexpr bool contains(EventMask other) const { return (bits & other.bits) != 0; }
};
inline constexpr EventMask kLeftMouseDown{0x02};
inline constexpr EventMask kLeftMouseUp{0x04};
inline constexpr EventMask kRightMouseDown{0x08};
inline constexpr EventMask kLeftMouseDragged{0x40};

[[nodiscard]] constexpr EventMask maskOf(MouseEventKind kind) {
  switch (kind) {
    case MouseEventKind::leftDown:
      return kLeftMouseDown;
    case MouseEventKind::leftUp:
      return kLeftMouseUp;
    case MouseEventKind::rightDown:
      return kRightMouseDown;
    case MouseEventKind::leftDragged:
      return kLeftMouseDragged;
  }
  return {};
}

struct MouseEvent {
  MouseEventKind kind = MouseEventKind::leftDown;
  /// The panel of ours that the event is for; none for our other windows.
  Panel const* panel = nullptr;
  /// From the panel's bottom-left corner.
  BottomLeftPoint locationInPanel;
};

enum class MonitorDecision {
  pass,
  consume,  ///< the panel does not see the event
};

/// Looks at events before their receivers do. Main thread.
class EventMonitors {
 public:
  using Handler = std::function<MonitorDecision(MouseEvent const&)>;
  virtual ~EventMonitors() = default;
  /// Events of this program's own windows whose kind is in `mask`, until the subscription ends.
  [[nodiscard]] virtual Subscription addLocalMonitor(EventMask mask, Handler handler) = 0;
};

class Pointer {
 public:
  virtual ~Pointer() = default;
  /// Main thread.
  [[nodiscard]] virtual BottomLeftPoint location() const = 0;
};

}  // namespace morla::platform
