#include "platform/linux/ui/views/RoundedShape.h"

#include <algorithm>

namespace morla::linux {
namespace {

/// How far along the edge, in radii, a continuous corner begins to bend.
constexpr double kReach = 1.528665;

/// One corner whose curvature grows from the straight edge to the middle and falls again, in three curves. `along` and
/// `across` lead from the corner point along the edge that is arrived on and along the one that is left on, each one
/// radius long.
void addContinuousCorner(QPainterPath& path, QPointF corner, QPointF along, QPointF across) {
  auto const at = [&](double a, double b) { return corner + a * along + b * across; };
  path.lineTo(at(kReach, 0));
  path.cubicTo(at(1.08849, 0), at(0.86841, 0), at(0.63149, 0.07491));
  path.cubicTo(at(0.37282, 0.16906), at(0.16906, 0.37282), at(0.07491, 0.63149));
  path.cubicTo(at(0, 0.86841), at(0, 1.08849), at(0, kReach));
}

}  // namespace

QPainterPath roundedShape(QRectF const& area, double radius, view::Corners corners) {
  QPainterPath path;
  double const half = std::min(area.width(), area.height()) / 2;
  radius = std::clamp(radius, 0.0, std::max(half, 0.0));
  // Where the bends of two corners would meet, only circles fit.
  if (corners == view::Corners::circular || radius * kReach > half) {
    path.addRoundedRect(area, radius, radius);
    return path;
  }
  QPointF const right(radius, 0);
  QPointF const down(0, radius);
  path.moveTo(area.topLeft() + kReach * right);
  addContinuousCorner(path, area.topRight(), -right, down);
  addContinuousCorner(path, area.bottomRight(), -down, -right);
  addContinuousCorner(path, area.bottomLeft(), right, -down);
  addContinuousCorner(path, area.topLeft(), down, right);
  path.closeSubpath();
  return path;
}

}  // namespace morla::linux
