#include "captureone/pictures/Motifs.h"

#include <QColorSpace>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

namespace morla::captureone {
namespace {

/// What makes one picture of a motif differ from another. `minstd_rand` is the same everywhere.
struct Variation {
  double hue = 0;  ///< 0 to 1
  std::minstd_rand random;

  /// From 0 to 1.
  double chance() { return double(random()) / double(std::minstd_rand::max()); }
  [[nodiscard]] QColor colour(double turn, double saturation, double lightness) const {
    double const h = hue + turn;
    return QColor::fromHslF(static_cast<float>(h - std::floor(h)), static_cast<float>(saturation),
                            static_cast<float>(lightness));
  }
};

/// Every motif is drawn on a canvas 3 wide and 2 high, or 2 wide and 3 high.
using Motif = void (*)(QPainter& painter, QSizeF canvas, Variation& variation);

void fill(QPainter& painter, QSizeF canvas, QColor top, QColor bottom) {
  QLinearGradient gradient(0, 0, 0, canvas.height());
  gradient.setColorAt(0, top);
  gradient.setColorAt(1, bottom);
  painter.fillRect(QRectF({}, canvas), gradient);
}

void disc(QPainter& painter, QPointF centre, double radius, QBrush const& brush) {
  painter.setBrush(brush);
  painter.drawEllipse(centre, radius, radius);
}

/// The ground from a wavy line downwards.
QPainterPath ridge(QSizeF canvas, double height, double swing, Variation& variation, bool isJagged) {
  double const phase = variation.chance() * 6;
  constexpr int kSteps = 48;
  QPainterPath path(QPointF(0, canvas.height()));
  for (int i = 0; i <= kSteps; ++i) {
    double const x = canvas.width() * i / kSteps;
    double y = height - swing * std::sin(x * 1.7 + phase) - swing * 0.4 * std::sin(x * 4.1 + 2 * phase);
    if (isJagged) y -= swing * 0.5 * (variation.chance() - 0.5);
    path.lineTo(x, y);
  }
  path.lineTo(canvas.width(), canvas.height());
  path.closeSubpath();
  return path;
}

void dunes(QPainter& painter, QSizeF canvas, Variation& variation) {
  fill(painter, canvas, variation.colour(0.52, 0.35, 0.62), variation.colour(0.02, 0.75, 0.8));
  QPointF const sun(canvas.width() * (0.25 + 0.5 * variation.chance()), canvas.height() * 0.42);
  QRadialGradient glow(sun, 0.9);
  glow.setColorAt(0, QColor(255, 250, 225, 230));
  glow.setColorAt(1, QColor(255, 250, 225, 0));
  painter.fillRect(QRectF({}, canvas), glow);
  disc(painter, sun, 0.16, QColor(255, 251, 235));
  for (int layer = 0; layer < 5; ++layer) {
    painter.setBrush(variation.colour(0.02 + layer * 0.012, 0.5, 0.62 - layer * 0.1));
    painter.drawPath(ridge(canvas, canvas.height() * (0.52 + layer * 0.1), 0.09, variation, false));
  }
}

void mountains(QPainter& painter, QSizeF canvas, Variation& variation) {
  fill(painter, canvas, variation.colour(0.58, 0.45, 0.5), variation.colour(0.55, 0.4, 0.9));
  double const shore = canvas.height() * 0.66;
  for (int layer = 0; layer < 4; ++layer) {
    painter.setBrush(variation.colour(0.6 - layer * 0.03, 0.28, 0.68 - layer * 0.14));
    painter.drawPath(ridge(canvas, canvas.height() * (0.36 + layer * 0.09), 0.16 - layer * 0.02, variation, true));
  }
  QLinearGradient water(0, shore, 0, canvas.height());
  water.setColorAt(0, variation.colour(0.55, 0.35, 0.72));
  water.setColorAt(1, variation.colour(0.6, 0.5, 0.3));
  painter.fillRect(QRectF(0, shore, canvas.width(), canvas.height() - shore), water);
  for (int i = 0; i < 26; ++i) {
    double const y = shore + (canvas.height() - shore) * std::pow((i + 1) / 27.0, 1.4);
    painter.setBrush(QColor(255, 255, 255, 60));
    painter.drawRoundedRect(QRectF(canvas.width() * variation.chance() * 0.8, y, 0.2 + 0.4 * variation.chance(), 0.008),
                            0.004, 0.004);
  }
}

void stillLife(QPainter& painter, QSizeF canvas, Variation& variation) {
  fill(painter, canvas, variation.colour(0.5, 0.2, 0.24), variation.colour(0.5, 0.22, 0.4));
  double const table = canvas.height() * 0.64;
  painter.fillRect(QRectF(0, table, canvas.width(), canvas.height() - table), variation.colour(0.08, 0.3, 0.3));
  for (int i = 0; i < 4; ++i) {
    double const radius = 0.2 + 0.12 * variation.chance();
    QPointF const centre(canvas.width() * (0.2 + 0.2 * i), table + 0.14 - radius * 0.75 + 0.08 * (i % 2));
    painter.setBrush(QColor(0, 0, 0, 90));
    painter.drawEllipse(centre + QPointF(0.1, radius * 0.86), radius * 1.15, radius * 0.22);
    QRadialGradient skin(centre, radius * 1.25, centre - QPointF(radius * 0.4, radius * 0.45));
    skin.setColorAt(0, variation.colour(i * 0.09, 0.75, 0.78));
    skin.setColorAt(0.5, variation.colour(i * 0.09, 0.7, 0.5));
    skin.setColorAt(1, variation.colour(i * 0.09, 0.7, 0.2));
    disc(painter, centre, radius, skin);
  }
}

void portrait(QPainter& painter, QSizeF canvas, Variation& variation) {
  QPointF const light(canvas.width() * 0.62, canvas.height() * 0.34);
  QRadialGradient backdrop(light, canvas.height() * 0.75);
  backdrop.setColorAt(0, variation.colour(0.1, 0.45, 0.72));
  backdrop.setColorAt(1, variation.colour(0.12, 0.5, 0.18));
  painter.fillRect(QRectF({}, canvas), backdrop);
  double const middle = canvas.width() / 2;
  painter.setBrush(variation.colour(0.6, 0.25, 0.13));
  QPainterPath shoulders(QPointF(middle - 0.95, canvas.height()));
  shoulders.cubicTo(middle - 0.9, canvas.height() * 0.68, middle - 0.3, canvas.height() * 0.68, middle - 0.2,
                    canvas.height() * 0.58);
  shoulders.lineTo(middle - 0.2, canvas.height() * 0.48);
  shoulders.lineTo(middle + 0.2, canvas.height() * 0.48);
  shoulders.lineTo(middle + 0.2, canvas.height() * 0.58);
  shoulders.cubicTo(middle + 0.3, canvas.height() * 0.68, middle + 0.9, canvas.height() * 0.68, middle + 0.95,
                    canvas.height());
  painter.drawPath(shoulders);
  painter.drawEllipse(QPointF(middle, canvas.height() * 0.4), 0.36, 0.47);
}

void blossom(QPainter& painter, QSizeF canvas, Variation& variation) {
  fill(painter, canvas, variation.colour(0.36, 0.3, 0.24), variation.colour(0.4, 0.35, 0.12));
  for (int i = 0; i < 16; ++i) {
    QPointF const centre(canvas.width() * variation.chance(), canvas.height() * variation.chance());
    disc(painter, centre, 0.08 + 0.2 * variation.chance(), QColor(255, 255, 255, 16));
  }
  painter.translate(canvas.width() / 2, canvas.height() / 2);
  for (int ring = 0; ring < 3; ++ring) {
    int const petals = 14 - ring * 3;
    double const length = 0.86 - ring * 0.24;
    for (int i = 0; i < petals; ++i) {
      painter.save();
      painter.rotate(360.0 * i / petals + ring * 11);
      QLinearGradient petal(0, 0, 0, -length);
      petal.setColorAt(0, variation.colour(0.0, 0.8, 0.38 + ring * 0.08));
      petal.setColorAt(1, variation.colour(0.03, 0.7, 0.74));
      painter.setBrush(petal);
      painter.drawEllipse(QPointF(0, -length * 0.6), 0.15, length * 0.42);
      painter.restore();
    }
  }
  disc(painter, {}, 0.16, QColor(250, 204, 80));
  disc(painter, {}, 0.09, QColor(214, 150, 40));
}

void city(QPainter& painter, QSizeF canvas, Variation& variation) {
  fill(painter, canvas, variation.colour(0.62, 0.5, 0.1), variation.colour(0.9, 0.45, 0.36));
  for (int layer = 0; layer < 3; ++layer) {
    double x = -0.1;
    while (x < canvas.width()) {
      double const width = 0.16 + 0.2 * variation.chance();
      double const height = canvas.height() * (0.3 + 0.42 * variation.chance()) - layer * 0.22;
      double const top = canvas.height() - height;
      painter.fillRect(QRectF(x, top, width, height), variation.colour(0.63, 0.3, 0.26 - layer * 0.08));
      for (double y = top + 0.05; y < canvas.height() - 0.04; y += 0.075) {
        for (double window = x + 0.03; window + 0.03 < x + width; window += 0.055) {
          if (variation.chance() > 0.42) continue;
          painter.fillRect(QRectF(window, y, 0.026, 0.04), QColor(255, 214, 130, 110 + layer * 60));
        }
      }
      x += width + 0.02;
    }
  }
}

struct Kind {
  Motif draw;
  QSize extent;
};
constexpr std::array<Kind, 6> kKinds{Kind{dunes, {3000, 2000}},     Kind{portrait, {2000, 3000}},
                                     Kind{mountains, {3000, 2000}}, Kind{blossom, {2400, 2400}},
                                     Kind{stillLife, {3000, 2000}}, Kind{city, {3000, 2000}}};

Kind const& kindOf(std::size_t picture) {
  return kKinds[picture % kKinds.size()];
}

}  // namespace

QSize motifExtent(std::size_t picture) {
  return kindOf(picture).extent;
}

QImage drawMotif(std::size_t picture, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull()) return image;
  image.fill(Qt::black);
  image.setColorSpace(QColorSpace::SRgb);
  auto const& kind = kindOf(picture);
  auto const round = picture / kKinds.size();
  Variation variation;
  // Steps of the golden ratio: colours of neighbours are far apart, and none comes twice.
  variation.hue = std::fmod(double(round) * std::numbers::phi, 1.0);
  // Seeds that follow each other begin alike.
  variation.random.seed(static_cast<std::uint32_t>((picture + 1) * 2654435761U));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  constexpr double kPixelsPerUnit = 1000;
  QSizeF const canvas = QSizeF(kind.extent) / kPixelsPerUnit;
  painter.scale(size.width() / canvas.width(), size.height() / canvas.height());
  kind.draw(painter, canvas, variation);
  return image;
}

}  // namespace morla::captureone
