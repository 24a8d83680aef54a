#include "platform/linux/ui/DrawingPainter.h"

#include <QPainter>
#include <QPen>

#include "base/Overloaded.h"
#include "platform/linux/ui/views/Colours.h"

namespace morla::linux {
namespace {

QRectF boundsOf(BottomLeftRect const& rect) {
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
                   painter.drawEllipse(boundsOf(s.bounds));
                 },
                 [&](view::FillRoundedRect const& s) {
                   painter.setBrush(toQt(s.colour));
                   painter.drawRoundedRect(boundsOf(s.bounds), s.radius, s.radius);
                 },
                 [&](view::StrokeRoundedRect const& s) {
                   painter.setPen(penOf(s.colour, s.lineWidth));
                   painter.drawRoundedRect(boundsOf(s.bounds), s.radius, s.radius);
                 },
                 [&](view::StrokeLine const& s) {
                   painter.setPen(penOf(s.colour, s.lineWidth));
                   painter.drawLine(QPointF(s.from.x, s.from.y), QPointF(s.to.x, s.to.y));
                 },
             },
             step);
}

}  // namespace

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
