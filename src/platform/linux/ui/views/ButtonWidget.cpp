#include "platform/linux/ui/views/ButtonWidget.h"

#include "platform/linux/ui/views/ButtonControl.h"
#include "platform/linux/ui/views/Controls.h"

namespace morla::linux {

ButtonWidget::ButtonWidget(ViewContext& context, QWidget* parent)
    : LeafWidget(context, parent), control_(new ButtonControl(this)) {
  QObject::connect(control_, &QPushButton::clicked, this,
                   [this] { perform([action = content().action] { action(); }); });
}

void ButtonWidget::contentDidChange() {
  control_->show(content());
}

Needs ButtonWidget::contentNeeds() const {
  return {QSize(kControlHeight, kControlHeight), control_->sizeHint()};
}

void ButtonWidget::arrangeContent(QRect const& place) {
  control_->setGeometry(place);
}

QWidget& ButtonWidget::accessibleWidget() {
  return *control_;
}

}  // namespace morla::linux
