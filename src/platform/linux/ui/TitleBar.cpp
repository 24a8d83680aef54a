#include "platform/linux/ui/TitleBar.h"

#include <QPainter>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Controls.h"
#include "platform/linux/ui/views/Lettering.h"
#include "view/PanelSpec.h"

namespace morla::linux {
namespace {

constexpr double kDiameter = 12;
constexpr int kBarHeight = static_cast<int>(view::kTitleBarHeight);

}  // namespace

CloseButton::CloseButton(QWidget* parent) : QAbstractButton(parent) {
  makeControl(*this);
  setFocusPolicy(Qt::NoFocus);
  setAccessibleName("Fermer");
  // As large as the bar is high, so that it is easy to hit.
  setGeometry(0, 0, kBarHeight, kBarHeight);
}

void CloseButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF disc(0, 0, kDiameter, kDiameter);
  disc.moveCenter(QRectF(rect()).center());
  QColor const over = isDark(palette()) ? Qt::white : Qt::black;
  bool const isHot = underMouse() || isDown();
  painter.setPen(Qt::NoPen);
  painter.setBrush(isHot ? toQt(view::SystemColour::red, palette()) : faded(over, 0.2));
  painter.drawEllipse(disc);
  if (isDown()) {
    painter.setBrush(faded(Qt::black, 0.15));
    painter.drawEllipse(disc);
  }
  if (!isHot) return;
  painter.setPen(QPen(faded(Qt::black, 0.6), 1.3, Qt::SolidLine, Qt::RoundCap));
  QPointF const middle = disc.center();
  painter.drawLine(middle + QPointF(-2.3, -2.3), middle + QPointF(2.3, 2.3));
  painter.drawLine(middle + QPointF(-2.3, 2.3), middle + QPointF(2.3, -2.3));
}

void paintTitle(QPainter& painter, QRectF const& area, QString const& title, QPalette const& palette) {
  auto const font = toQt(view::Font{13, view::Weight::semibold});
  auto const place = area.adjusted(kBarHeight, 0, -kBarHeight, 0);
  painter.setFont(font);
  painter.setPen(toQt(view::SystemColour::primary, palette));
  painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, fitted(title, font, place.width()));
}

}  // namespace morla::linux
