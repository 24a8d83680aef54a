#include "platform/linux/ui/views/PickerWidget.h"

#include "platform/linux/ui/views/Controls.h"
#include "platform/linux/ui/views/PickerControl.h"

namespace morla::linux {
namespace {

constexpr int kLeastWidth = 48;

}  // namespace

PickerWidget::PickerWidget(ViewContext& context, QWidget* parent)
    : LeafWidget(context, parent),
      control_(new PickerControl(this, [this](std::size_t option) { didChoose(option); })) {}

void PickerWidget::didChoose(std::size_t option) {
  control_->setCurrent(option);
  perform([action = content().action, option] { action(option); });
  afterTheNextTree([this] { control_->setCurrent(content().selection); });
}

void PickerWidget::contentDidChange() {
  control_->setOptions(content().options);
  control_->setUnlisted(content().unlisted);
  control_->setCurrent(content().selection);
}

Needs PickerWidget::contentNeeds() const {
  auto const natural = control_->sizeHint();
  return {QSize(std::min(kLeastWidth, natural.width()), natural.height()), natural};
}

void PickerWidget::arrangeContent(QRect const& place) {
  control_->setGeometry(place);
}

QWidget& PickerWidget::accessibleWidget() {
  return *control_;
}

}  // namespace morla::linux
