#pragma once

#include <string>
#include <variant>
#include <vector>

#include "base/Geometry.h"

namespace morla::view {

/// Components from 0 to 1, sRGB, not premultiplied.
struct Colour {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  friend bool operator==(Colour const&, Colour const&) = default;
};

inline constexpr Colour kBlack{0, 0, 0, 1};
inline constexpr Colour kWhite{1, 1, 1, 1};

struct FillOval {
  BottomLeftRect bounds;
  Colour colour;
  friend bool operator==(FillOval const&, FillOval const&) = default;
};

struct FillRoundedRect {
  BottomLeftRect bounds;
  double radius = 0;
  Colour colour;
  friend bool operator==(FillRoundedRect const&, FillRoundedRect const&) = default;
};

struct StrokeRoundedRect {
  BottomLeftRect bounds;  ///< the middle of the line
  double radius = 0;
  double lineWidth = 1;
  Colour colour;
  friend bool operator==(StrokeRoundedRect const&, StrokeRoundedRect const&) = default;
};

struct StrokeLine {
  BottomLeftPoint from;
  BottomLeftPoint to;
  double lineWidth = 1;
  Colour colour;
  friend bool operator==(StrokeLine const&, StrokeLine const&) = default;
};

using DrawingStep = std::variant<FillOval, FillRoundedRect, StrokeRoundedRect, StrokeLine>;

/// A picture as steps from back to front, in points with the origin at its bottom left. Sharp at every scale, since
/// each back end draws it at the device's resolution.
struct Drawing {
  Size size;
  std::vector<DrawingStep> steps;
  friend bool operator==(Drawing const&, Drawing const&) = default;
};

}  // namespace morla::view
