#pragma once

namespace morla {

/// All coordinates and sizes are in points.

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(Size const&, Size const&) = default;
};

/// A place in the coordinate system of panels and of the stored positions: the origin is the bottom-left corner of the
/// first screen, y grows upwards.
struct BottomLeftPoint {
  double x = 0;
  double y = 0;
  friend bool operator==(BottomLeftPoint const&, BottomLeftPoint const&) = default;
};

/// A place in the coordinate system of displays, pointers and windows of other programs: the origin is the top-left
/// corner of the first screen, y grows downwards.
struct GlobalPoint {
  double x = 0;
  double y = 0;
  friend bool operator==(GlobalPoint const&, GlobalPoint const&) = default;
};

/// `origin` is the bottom-left corner.
struct BottomLeftRect {
  BottomLeftPoint origin;
  Size size;
  friend bool operator==(BottomLeftRect const&, BottomLeftRect const&) = default;
};

/// `origin` is the top-left corner.
struct GlobalRect {
  GlobalPoint origin;
  Size size;
  friend bool operator==(GlobalRect const&, GlobalRect const&) = default;
};

/// The one conversion between the two systems, which both hang on the first screen; it is its own inverse.
class ScreenFlip {
 public:
  /// The height of the first screen, in points.
  explicit constexpr ScreenFlip(double firstScreenHeight) : height_(firstScreenHeight) {}

  [[nodiscard]] constexpr GlobalPoint toGlobal(BottomLeftPoint p) const { return {p.x, height_ - p.y}; }
  [[nodiscard]] constexpr BottomLeftPoint toBottomLeft(GlobalPoint p) const { return {p.x, height_ - p.y}; }
  [[nodiscard]] constexpr GlobalRect toGlobal(BottomLeftRect r) const {
    return {{r.origin.x, height_ - r.origin.y - r.size.height}, r.size};
  }
  [[nodiscard]] constexpr BottomLeftRect toBottomLeft(GlobalRect r) const {
    return {{r.origin.x, height_ - r.origin.y - r.size.height}, r.size};
  }

 private:
  double height_;
};

}  // namespace morla
