#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

class ButtonControl;

class ButtonWidget : public LeafWidget<view::Button> {
 public:
  ButtonWidget(ViewContext& context, QWidget* parent);

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  [[nodiscard]] QWidget& accessibleWidget() override;

 private:
  ButtonControl* control_;
};

}  // namespace morla::linux
