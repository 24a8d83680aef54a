#include "platform/linux/ui/DrawingIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <utility>

#include "platform/linux/ui/DrawingPainter.h"

namespace morla::linux {
namespace {

class DrawingIconEngine : public QIconEngine {
 public:
  explicit DrawingIconEngine(view::Drawing drawing) : drawing_(std::move(drawing)) {}

  void paint(QPainter* painter, QRect const& rect, QIcon::Mode, QIcon::State) override {
    paintDrawing(*painter, drawing_, fitted(rect));
  }

  QPixmap pixmap(QSize const& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawingIconEngine(drawing_); }

  /// A tray asks for the sizes that there are when it wants pictures instead of a window.
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (int const side : {16, 18, 22, 24, 32, 36, 44, 48, 64}) sizes.append(QSize(side, side));
    return sizes;
  }

 private:
  /// The largest area of the drawing's own form in the middle of `rect`.
  [[nodiscard]] QRectF fitted(QRectF const& rect) const {
    QSizeF const size = QSizeF(drawing_.size.width, drawing_.size.height).scaled(rect.size(), Qt::KeepAspectRatio);
    QRectF area(QPointF(0, 0), size);
    area.moveCenter(rect.center());
    return area;
  }

  view::Drawing drawing_;
};

}  // namespace

QIcon makeIcon(view::Drawing const& drawing) {
  return QIcon(new DrawingIconEngine(drawing));
}

}  // namespace morla::linux
