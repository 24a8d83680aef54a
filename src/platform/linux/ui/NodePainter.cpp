#include "platform/linux/ui/NodePainter.h"

#include <QColor>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "base/Overloaded.h"

namespace morla::linux {
namespace {

QColor toQt(view::Colour const& colour) {
  return QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                          static_cast<float>(colour.blue), static_cast<float>(colour.alpha));
}

QRectF toQt(BottomLeftRect const& rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

QPen penOf(view::Colour const& colour, double width) {
  return {QBrush(toQt(colour)), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

void paintStep(QPainter& painter, view::DrawingStep const& step) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::NoBrush);
  std::visit(Overloaded{
                 [&](view::FillOval const& s) {
                   painter.setBrush(toQt(s.colour));
                   painter.drawEllipse(toQt(s.bounds));
                 },
                 [&](view::FillRoundedRect const& s) {
                   painter.setBrush(toQt(s.colour));
                   painter.drawRoundedRect(toQt(s.bounds), s.radius, s.radius);
                 },
                 [&](view::StrokeRoundedRect const& s) {
                   painter.setPen(penOf(s.colour, s.lineWidth));
                   painter.drawRoundedRect(toQt(s.bounds), s.radius, s.radius);
                 },
                 [&](view::StrokeLine const& s) {
                   painter.setPen(penOf(s.colour, s.lineWidth));
                   painter.drawLine(QPointF(s.from.x, s.from.y), QPointF(s.to.x, s.to.y));
                 },
             },
             step);
}

QRectF centred(Size size, QRectF const& area, double scale) {
  auto const onPixel = [scale](double value) { return std::round(value * scale) / scale; };
  return {onPixel(area.x() + (area.width() - size.width) / 2), onPixel(area.y() + (area.height() - size.height) / 2),
          size.width, size.height};
}

}  // namespace

Size naturalSize(view::Node const& node) {
  return std::visit(Overloaded{
                        [](view::ZStack const& stack) {
                          Size size;
                          for (auto const& child : stack.children) {
                            auto const of = naturalSize(child);
                            size = {std::max(size.width, of.width), std::max(size.height, of.height)};
                          }
                          return size;
                        },
                        [](view::Canvas const& canvas) { return canvas.drawing.size; },
                    },
                    node.content);
}

void paintNode(QPainter& painter, view::Node const& node, QRectF const& area) {
  auto const own = centred(naturalSize(node), area, painter.device()->devicePixelRatioF());
  std::visit(Overloaded{
                 [&](view::ZStack const& stack) {
                   for (auto const& child : stack.children) paintNode(painter, child, own);
                 },
                 [&](view::Canvas const& canvas) { paintDrawing(painter, canvas.drawing, own); },
             },
             node.content);
}

void paintDrawing(QPainter& painter, view::Drawing const& drawing, QRectF const& area) {
  if (drawing.size.width <= 0 || drawing.size.height <= 0) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // Drawings grow upwards.
  painter.translate(area.bottomLeft());
  painter.scale(area.width() / drawing.size.width, -area.height() / drawing.size.height);
  for (auto const& step : drawing.steps) paintStep(painter, step);
  painter.restore();
}

QImage renderNode(view::Node const& node, Size size, double scale) {
  QImage image(static_cast<int>(std::lround(size.width * scale)), static_cast<int>(std::lround(size.height * scale)),
               QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  paintNode(painter, node, QRectF(0, 0, size.width, size.height));
  return image;
}

std::vector<PixelRect> opaquePixels(QImage const& image, int minimumAlpha) {
  std::vector<PixelRect> runs;
  // Read in place: a conversion to alpha alone would start Qt's pool of threads for a picture of 40 x 40 points.
  for (int y = 0; y < image.height(); ++y) {
    auto const* row = static_cast<QRgb const*>(static_cast<void const*>(image.constScanLine(y)));
    int start = -1;
    for (int x = 0; x <= image.width(); ++x) {
      bool const isIn = x < image.width() && qAlpha(row[x]) >= minimumAlpha;
      if (isIn && start < 0) start = x;
      if (!isIn && start >= 0) {
        runs.push_back({start, y, x - start, 1});
        start = -1;
      }
    }
  }
  return runs;
}

}  // namespace morla::linux
