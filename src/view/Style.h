#pragma once

#include <variant>

#include "view/Drawing.h"

namespace morla::view {

/// Colours that follow the desktop's appearance, light or dark; each back end knows what they are.
enum class SystemColour {
  primary,    ///< text
  secondary,  ///< text of less weight
  tertiary,   ///< placeholders, what is disabled
  accent,
  red,
  orange,
  green,
  grey,
  windowBackground,
  controlBackground,
  separator,
};

/// What something is filled or written with. `opacity`, from 0 to 1, applies on top of the colour's own.
struct Paint {
  std::variant<SystemColour, Colour> colour = SystemColour::primary;
  double opacity = 1;
  friend bool operator==(Paint const&, Paint const&) = default;
};

enum class Weight { regular, medium, semibold, bold };

/// The system's font.
struct Font {
  double size = 13;  ///< in points
  Weight weight = Weight::regular;
  friend bool operator==(Font const&, Font const&) = default;
};

/// Distances from the four edges, in points.
struct Edges {
  double top = 0;
  double leading = 0;
  double bottom = 0;
  double trailing = 0;

  [[nodiscard]] static constexpr Edges all(double distance) { return {distance, distance, distance, distance}; }
  [[nodiscard]] static constexpr Edges symmetric(double horizontal, double vertical) {
    return {vertical, horizontal, vertical, horizontal};
  }
  friend bool operator==(Edges const&, Edges const&) = default;
};

enum class Corners {
  circular,
  continuous,  ///< the curvature grows gradually from the straight edge
};

/// A rounded rectangle that fills what it stands behind.
struct RoundedRect {
  double radius = 0;
  Corners corners = Corners::circular;
  Paint fill;
  friend bool operator==(RoundedRect const&, RoundedRect const&) = default;
};

}  // namespace morla::view
