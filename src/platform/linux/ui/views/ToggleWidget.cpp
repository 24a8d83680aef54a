#include "platform/linux/ui/views/ToggleWidget.h"

#include <QCheckBox>
#include <QPainter>
#include <QVariantAnimation>
#include <utility>

#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Controls.h"

namespace morla::linux {
namespace {

constexpr int kWidth = 38;
constexpr int kHeight = 22;
constexpr double kKnobInset = 2;
constexpr int kSlideMilliseconds = 180;

}  // namespace

class ToggleWidget::Control : public QCheckBox {
 public:
  explicit Control(QWidget* parent) : QCheckBox(parent) {
    makeControl(*this);
    slide_.setDuration(kSlideMilliseconds);
    slide_.setEasingCurve(QEasingCurve::InOutQuad);
    QObject::connect(&slide_, &QVariantAnimation::valueChanged, this, [this](QVariant const& value) {
      knob_ = value.toDouble();
      update();
    });
    QObject::connect(this, &QCheckBox::toggled, this, [this](bool isOn) { moveKnob(isOn ? 1 : 0); });
  }

  /// Without a slide, for a switch that only begins to be one.
  void stand(bool isOn) {
    setChecked(isOn);
    slide_.stop();
    knob_ = isOn ? 1 : 0;
  }

 protected:
  [[nodiscard]] bool hitButton(QPoint const& place) const override { return rect().contains(place); }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(kFaint);
    double const radius = height() / 2.0;
    QColor const over = isDark(palette()) ? Qt::white : Qt::black;
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(over, 0.16));
    painter.drawRoundedRect(rect(), radius, radius);
    painter.setBrush(faded(toQt(view::SystemColour::accent, palette()), knob_));
    painter.drawRoundedRect(rect(), radius, radius);

    double const diameter = height() - 2 * kKnobInset;
    QRectF const knob(kKnobInset + knob_ * (width() - height()), kKnobInset, diameter, diameter);
    painter.setBrush(faded(Qt::black, 0.14));
    painter.drawEllipse(knob.translated(0, 0.75));
    painter.setBrush(isDown() ? QColor(0xF0, 0xF0, 0xF0) : QColor(Qt::white));
    painter.drawEllipse(knob);
    paintFocusRing(painter, rect(), radius, *this, knob_ > 0.5 ? Filling::accent : Filling::neutral);
  }

 private:
  void moveKnob(double end) {
    slide_.stop();
    if (!isVisible() || !Appearance::animates()) {
      knob_ = end;
      update();
      return;
    }
    slide_.setStartValue(knob_);
    slide_.setEndValue(end);
    slide_.start();
  }

  QVariantAnimation slide_;
  double knob_ = 0;  ///< from 0, off, to 1
};

ToggleWidget::ToggleWidget(ViewContext& context, QWidget* parent)
    : LeafWidget(context, parent), control_(new Control(this)) {
  // Not `clicked`: a screen reader turns the switch without a click.
  QObject::connect(control_, &QCheckBox::toggled, this, [this](bool isOn) {
    if (isFollowing_) return;
    perform([action = content().action, isOn] { action(isOn); });
    afterTheNextTree([this] { followTree(); });
  });
}

void ToggleWidget::contentDidChange() {
  followTree();
}

void ToggleWidget::followTree() {
  isFollowing_ = true;
  if (std::exchange(hasAppeared_, true)) {
    control_->setChecked(content().isOn);
  } else {
    control_->stand(content().isOn);
  }
  isFollowing_ = false;
}

Needs ToggleWidget::contentNeeds() const {
  return {QSize(kWidth, kHeight), QSize(kWidth, kHeight)};
}

void ToggleWidget::arrangeContent(QRect const& place) {
  control_->setGeometry(
      QRect(place.x() + (place.width() - kWidth) / 2, place.y() + (place.height() - kHeight) / 2, kWidth, kHeight));
}

QWidget& ToggleWidget::accessibleWidget() {
  return *control_;
}

}  // namespace morla::linux
