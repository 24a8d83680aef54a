#include "platform/linux/ui/views/Symbols.h"

#include <QPainterPathStroker>
#include <QTransform>
#include <cmath>
#include <map>
#include <string_view>

namespace morla::linux {
namespace {

/// Symbols are drawn on a square of this side, y downwards; a letter is 20 of it high.
constexpr double kGrid = 24;
constexpr double kSidePerLetter = 1.2;

/// Makes shapes from lines of the thickness that goes with a weight.
class Pen {
 public:
  explicit Pen(view::Weight weight) : width_(widthOf(weight)) {}

  [[nodiscard]] double width() const { return width_; }

  [[nodiscard]] QPainterPath stroke(QPainterPath const& line, double factor = 1) const {
    QPainterPathStroker stroker;
    stroker.setWidth(width_ * factor);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line);
  }
  [[nodiscard]] QPainterPath line(QPointF from, QPointF to, double factor = 1) const {
    QPainterPath path(from);
    path.lineTo(to);
    return stroke(path, factor);
  }
  [[nodiscard]] QPainterPath ring(QPointF centre, double radius) const {
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return stroke(path);
  }

 private:
  static double widthOf(view::Weight weight) {
    switch (weight) {
      case view::Weight::regular:
        return 1.7;
      case view::Weight::medium:
        return 1.95;
      case view::Weight::semibold:
        return 2.2;
      case view::Weight::bold:
        return 2.5;
    }
    return 1.7;
  }

  double width_;
};

QPainterPath disc(QPointF centre, double radius) {
  QPainterPath path;
  path.addEllipse(centre, radius, radius);
  return path;
}

QPainterPath box(double x, double y, double width, double height, double radius) {
  QPainterPath path;
  path.addRoundedRect(QRectF(x, y, width, height), radius, radius);
  return path;
}

QPointF onCircle(QPointF centre, double radius, double degrees) {
  double const angle = degrees * M_PI / 180;
  return centre + QPointF(radius * std::cos(angle), radius * std::sin(angle));
}

constexpr QPointF kMiddle(12, 12);
constexpr double kRingRadius = 9.6;

QPainterPath triangleBody() {
  QPainterPath path(QPointF(12, 4.4));
  path.lineTo(21, 19.6);
  path.lineTo(3, 19.6);
  path.closeSubpath();
  // Round corners: the triangle and a thick line round it.
  QPainterPathStroker stroker;
  stroker.setWidth(3.4);
  stroker.setJoinStyle(Qt::RoundJoin);
  return path.united(stroker.createStroke(path));
}

QPainterPath exclamationTriangleFill(Pen const& pen) {
  return triangleBody() - pen.line({12, 9.2}, {12, 14}, 1.15) - disc({12, 17.5}, 0.78 * pen.width());
}

QPainterPath questionMark(Pen const& pen) {
  QPainterPath hook(QPointF(9.1, 9.6));
  hook.cubicTo(9.1, 7.6, 10.4, 6.6, 12.1, 6.6);
  hook.cubicTo(13.8, 6.6, 15, 7.7, 15, 9.3);
  hook.cubicTo(15, 11.6, 12.1, 11.5, 12.1, 14);
  return pen.stroke(hook) + disc({12.1, 17.1}, 0.68 * pen.width());
}

QPainterPath questionApp(Pen const& pen) {
  return pen.stroke(box(2.9, 2.9, 18.2, 18.2, 4.6)) + questionMark(pen);
}

QPainterPath lock(Pen const& pen) {
  QPainterPath shackle(QPointF(9.6, 11.5));
  shackle.lineTo(9.6, 9.6);
  shackle.cubicTo(9.6, 6.3, 14.4, 6.3, 14.4, 9.6);
  shackle.lineTo(14.4, 11.5);
  return box(7.9, 10.9, 8.2, 6.3, 1.3).united(pen.stroke(shackle, 0.85));
}

QPainterPath lockCircle(Pen const& pen) {
  return pen.ring(kMiddle, kRingRadius) + lock(pen);
}

QPainterPath lockCircleFill(Pen const& pen) {
  return disc(kMiddle, kRingRadius + pen.width() / 2) - lock(pen);
}

QPainterPath docFill(Pen const& pen) {
  QPainterPath sheet(QPointF(7, 2.4));
  sheet.lineTo(12.2, 2.4);
  sheet.lineTo(12.2, 7.6);
  sheet.quadTo(12.2, 9.6, 14.2, 9.6);
  sheet.lineTo(19.2, 9.6);
  sheet.lineTo(19.2, 19.2);
  sheet.quadTo(19.2, 21.6, 16.8, 21.6);
  sheet.lineTo(7.2, 21.6);
  sheet.quadTo(4.8, 21.6, 4.8, 19.2);
  sheet.lineTo(4.8, 4.8);
  sheet.quadTo(4.8, 2.4, 7.2, 2.4);
  sheet.closeSubpath();
  QPainterPath corner(QPointF(13.5 + 0.2 * (1.7 - pen.width()), 2.9));
  corner.lineTo(18.6, 8.2);
  corner.lineTo(14.5, 8.2);
  corner.quadTo(13.5, 8.2, 13.5, 7.2);
  corner.closeSubpath();
  return sheet + corner;
}

QPainterPath aperture(Pen const& pen) {
  QPainterPath path = pen.ring(kMiddle, kRingRadius);
  // Six blades: each edge runs from the ring past the opening.
  for (int blade = 0; blade < 6; ++blade) {
    double const degrees = 60 * blade;
    path = path.united(pen.line(onCircle(kMiddle, kRingRadius, degrees), onCircle(kMiddle, 4.6, degrees + 74), 0.85));
  }
  return path;
}

QPainterPath cursiveF(Pen const& pen) {
  QPainterPath letter(QPointF(16, 7.3));
  letter.cubicTo(15.5, 5.9, 13.5, 6, 13, 8.1);
  letter.lineTo(11, 16.2);
  letter.cubicTo(10.5, 18.2, 8.5, 18.4, 8, 17);
  return pen.stroke(letter, 0.95) + pen.line({9.4, 10.7}, {14.8, 10.7}, 0.95);
}

QPainterPath cursiveFCircle(Pen const& pen) {
  return pen.ring(kMiddle, kRingRadius) + cursiveF(pen);
}

QPainterPath timer(Pen const& pen) {
  // A dial that is open between the top and the right, with a hand towards the opening's other side.
  QRectF const dial(kMiddle.x() - kRingRadius, kMiddle.y() - kRingRadius, 2 * kRingRadius, 2 * kRingRadius);
  QPainterPath arc;
  arc.arcMoveTo(dial, 90);
  arc.arcTo(dial, 90, -318);
  auto path = pen.stroke(arc).united(pen.line({12, 2.4}, {12, 6}));
  path = path.united(pen.line({7.6, 7.6}, kMiddle));
  return path.united(disc(kMiddle, 1.15 * pen.width()));
}

QPainterPath cameraFill(Pen const& pen) {
  QPainterPath body = box(1.6, 6, 20.8, 14.2, 2.8);
  QPainterPath hump(QPointF(7.4, 6.6));
  hump.lineTo(8.7, 4.5);
  hump.quadTo(9.2, 3.7, 10.1, 3.7);
  hump.lineTo(13.9, 3.7);
  hump.quadTo(14.8, 3.7, 15.3, 4.5);
  hump.lineTo(16.6, 6.6);
  hump.closeSubpath();
  QPointF const lens(12, 13);
  return body.united(hump) - (disc(lens, 5) - disc(lens, 5 - pen.width())) - disc({18.9, 9.4}, 0.6 * pen.width());
}

using Maker = QPainterPath (*)(Pen const& pen);

std::map<std::string_view, Maker> const& makers() {
  static std::map<std::string_view, Maker> const all{
      {"camera.aperture", aperture},
      {"camera.fill", cameraFill},
      {"doc.fill", docFill},
      {"exclamationmark.triangle.fill", exclamationTriangleFill},
      {"f.cursive.circle", cursiveFCircle},
      {"lock.circle", lockCircle},
      {"lock.circle.fill", lockCircleFill},
      {"questionmark.app", questionApp},
      {"timer", timer},
  };
  return all;
}

}  // namespace

QSizeF symbolSize(std::string const& name, view::Font const& font) {
  if (!makers().contains(name)) return {0, 0};
  return {font.size * kSidePerLetter, font.size * kSidePerLetter};
}

QPainterPath symbolShape(std::string const& name, view::Font const& font) {
  auto const found = makers().find(name);
  if (found == makers().end()) return {};
  double const scale = font.size * kSidePerLetter / kGrid;
  auto path = QTransform::fromScale(scale, scale).map(found->second(Pen(font.weight)));
  // What was cut out runs in any direction.
  path.setFillRule(Qt::OddEvenFill);
  return path;
}

}  // namespace morla::linux
