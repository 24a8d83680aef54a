#include "platform/linux/ui/views/FigureWidgets.h"

#include <QPainter>
#include <cmath>

#include "platform/linux/ui/DrawingPainter.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Symbols.h"

namespace morla::linux {
namespace {

QSize enclosing(QSizeF size) {
  return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

/// In the middle of `place`, on whole pixels of the device.
QRectF centred(QSizeF size, QRect const& place, double scale) {
  auto const onPixel = [scale](double value) { return std::round(value * scale) / scale; };
  return {onPixel(place.x() + (place.width() - size.width()) / 2),
          onPixel(place.y() + (place.height() - size.height()) / 2), size.width(), size.height()};
}

}  // namespace

void DividerWidget::paintContent(QPainter& painter, QRect const& place) {
  painter.fillRect(place, toQt(view::SystemColour::separator, palette()));
}

Needs SymbolWidget::contentNeeds() const {
  auto const size = enclosing(symbolSize(content().name, content().font));
  return {size, size};
}

void SymbolWidget::paintContent(QPainter& painter, QRect const& place) {
  auto const size = symbolSize(content().name, content().font);
  auto const area = centred(size, place, devicePixelRatioF());
  painter.fillPath(symbolShape(content().name, content().font).translated(area.topLeft()),
                   toQt(content().paint, palette()));
}

Needs CanvasWidget::contentNeeds() const {
  auto const size = enclosing({content().drawing.size.width, content().drawing.size.height});
  return {size, size};
}

void CanvasWidget::paintContent(QPainter& painter, QRect const& place) {
  auto const& drawing = content().drawing;
  paintDrawing(painter, drawing, centred({drawing.size.width, drawing.size.height}, place, devicePixelRatioF()));
}

Needs DiscWidget::contentNeeds() const {
  auto const size = enclosing({content().diameter, content().diameter});
  return {size, size};
}

void DiscWidget::paintContent(QPainter& painter, QRect const& place) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(toQt(content().fill, palette()));
  painter.drawEllipse(centred({content().diameter, content().diameter}, place, devicePixelRatioF()));
}

}  // namespace morla::linux
