#pragma once

#include <vector>

#include "base/Geometry.h"

namespace morla::linux {

/// A display in the two systems that meet here: points, in which the whole desktop has one scale, and Qt's own logical
/// coordinates, in which each display keeps the device pixels of its corner. At a scale of 1 they are the same.
struct ScreenArea {
  GlobalRect inPoints;
  GlobalRect inQt;
  friend bool operator==(ScreenArea const&, ScreenArea const&) = default;
};

enum class Placing {
  asAsked,           ///< moved only when it would be on no display at all: the user put it there
  inFullIfPossible,  ///< moved until the whole of it is on the display that holds most of it
};

[[nodiscard]] bool isEmpty(GlobalRect const& rect);
[[nodiscard]] GlobalRect intersection(GlobalRect const& a, GlobalRect const& b);

/// Where a window that was asked to be at `frame` is shown; never of another size. `frame` when there is no display.
[[nodiscard]] GlobalRect visiblePlace(GlobalRect const& frame, std::vector<ScreenArea> const& screens, Placing placing);

/// Points to Qt's coordinates, by the display that holds `p` or is nearest to it, and back.
[[nodiscard]] GlobalPoint pointsToQt(GlobalPoint p, std::vector<ScreenArea> const& screens);
[[nodiscard]] GlobalPoint qtToPoints(GlobalPoint p, std::vector<ScreenArea> const& screens);

/// A window belongs to the display that holds its centre, as Qt has it.
[[nodiscard]] GlobalRect pointsToQt(GlobalRect const& rect, std::vector<ScreenArea> const& screens);

}  // namespace morla::linux
