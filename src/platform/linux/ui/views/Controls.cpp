#include "platform/linux/ui/views/Controls.h"

#include <QAbstractButton>
#include <QPainter>

#include "platform/linux/ui/views/Colours.h"

namespace morla::linux {
namespace {

constexpr double kRingWidth = 3;
constexpr double kInnerRingWidth = 1.5;
constexpr double kInnerRingInset = 1.5;

}  // namespace

void makeControl(QWidget& control) {
  control.setAttribute(Qt::WA_NoMousePropagation);
  control.setAttribute(Qt::WA_Hover);
  control.setFocusPolicy(Qt::TabFocus);
}

void paintControlBody(QPainter& painter, QRectF const& area, QAbstractButton const& control) {
  auto const& palette = control.palette();
  auto const inner = area.adjusted(0.5, 0.5, -0.5, -0.5);
  QColor const over = isDark(palette) ? Qt::white : Qt::black;
  painter.setPen(Qt::NoPen);
  painter.setBrush(toQt(view::SystemColour::controlBackground, palette));
  painter.drawRoundedRect(inner, kControlRadius, kControlRadius);
  double const shade = control.isDown() ? 0.1 : control.isEnabled() && control.underMouse() ? 0.04 : 0;
  painter.setBrush(faded(over, shade));
  painter.setPen(QPen(faded(over, 0.14), 1));
  painter.drawRoundedRect(inner, kControlRadius, kControlRadius);
}

void paintFocusRing(QPainter& painter, QRectF const& area, double radius, QWidget const& control, Filling filling) {
  if (!control.hasFocus()) return;
  bool const isOnAccent = filling == Filling::accent;
  auto const colour =
      isOnAccent ? faded(Qt::white, 0.7) : faded(toQt(view::SystemColour::accent, control.palette()), 0.4);
  // The white one keeps off the edge, so that it also stands out from a light window.
  double const width = isOnAccent ? kInnerRingWidth : kRingWidth;
  double const inset = width / 2 + (isOnAccent ? kInnerRingInset : 0);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colour, width));
  painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius - inset / 2, radius - inset / 2);
}

}  // namespace morla::linux
