#include "platform/linux/ui/views/SpinnerWidget.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

#include "platform/linux/ui/views/Colours.h"

namespace morla::linux {
namespace {

constexpr int kPetals = 8;
constexpr int kStepMilliseconds = 100;
constexpr double kFaintest = 0.16;
constexpr double kStrongest = 0.75;

}  // namespace

Needs SpinnerWidget::contentNeeds() const {
  QSize const size(wholePoints(content().diameter), wholePoints(content().diameter));
  return {size, size};
}

void SpinnerWidget::paintContent(QPainter& painter, QRect const& place) {
  double const radius = content().diameter / 2;
  double const thickness = radius * 0.27;
  QColor const colour = isDark(palette()) ? Qt::white : Qt::black;
  painter.setPen(Qt::NoPen);
  painter.translate(QRectF(place).center());
  painter.rotate(360.0 / kPetals * step_);
  for (int petal = 0; petal < kPetals; ++petal) {
    // The one ahead is the strongest, those behind it fade.
    double const strength = kStrongest - (kStrongest - kFaintest) * std::min(1.0, petal / (kPetals - 2.0));
    painter.setBrush(faded(colour, strength));
    painter.drawRoundedRect(QRectF(-thickness / 2, -radius, thickness, radius * 0.52), thickness / 2, thickness / 2);
    painter.rotate(-360.0 / kPetals);
  }
}

void SpinnerWidget::showEvent(QShowEvent*) {
  timer_.start(kStepMilliseconds, this);
}

void SpinnerWidget::hideEvent(QHideEvent*) {
  timer_.stop();
}

void SpinnerWidget::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  step_ = (step_ + 1) % kPetals;
  update();
}

}  // namespace morla::linux
