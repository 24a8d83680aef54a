#include "app/FloatingButtonMouse.h"

#include <cmath>

namespace morla::app {
namespace {

/// A hand that clicks trembles this much, in points.
constexpr double kClickTolerance = 3.0;

}  // namespace

platform::MonitorDecision FloatingButtonMouse::handle(platform::MouseEvent const& event) {
  using platform::MonitorDecision;
  using platform::MouseEventKind;
  switch (event.kind) {
    case MouseEventKind::leftDown:
      wasDragged_ = false;
      pressOrigin_ = surroundings_.pointerLocation();
      return MonitorDecision::pass;
    case MouseEventKind::leftDragged: {
      auto const pointer = surroundings_.pointerLocation();
      if (std::hypot(pointer.x - pressOrigin_.x, pointer.y - pressOrigin_.y) > kClickTolerance) wasDragged_ = true;
      return MonitorDecision::pass;
    }
    case MouseEventKind::leftUp:
      if (!wasDragged_) surroundings_.clicked();
      surroundings_.released();
      return MonitorDecision::pass;
    case MouseEventKind::rightDown:
      surroundings_.contextMenuWanted(event.locationInPanel);
      return MonitorDecision::consume;
  }
  return MonitorDecision::pass;
}

}  // namespace morla::app
