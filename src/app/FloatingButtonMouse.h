#pragma once

#include "base/Geometry.h"
#include "platform/Events.h"

namespace morla::app {

/// Tells a click on the floating button from a drag. Main thread.
class FloatingButtonMouse {
 public:
  /// The world, as this decision needs it.
  class Surroundings {
   public:
    virtual ~Surroundings() = default;
    [[nodiscard]] virtual BottomLeftPoint pointerLocation() const = 0;
    /// The button was pressed and released without being moved.
    virtual void clicked() = 0;
    /// The left button came up, after a click or a drag.
    virtual void released() = 0;
    /// The right button went down, at this place of the panel.
    virtual void contextMenuWanted(BottomLeftPoint inPanel) = 0;
  };

  /// Every kind that `handle` looks at.
  static constexpr platform::EventMask kMask =
      platform::kLeftMouseDown | platform::kLeftMouseUp | platform::kRightMouseDown | platform::kLeftMouseDragged;

  explicit FloatingButtonMouse(Surroundings& surroundings) : surroundings_(surroundings) {}

  /// An event of the floating button's panel.
  platform::MonitorDecision handle(platform::MouseEvent const& event);

 private:
  Surroundings& surroundings_;
  bool wasDragged_ = false;
  BottomLeftPoint pressOrigin_;
};

}  // namespace morla::app
