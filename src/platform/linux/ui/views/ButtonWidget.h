#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

class QPushButton;

namespace morla::linux {

class ButtonWidget : public LeafWidget<view::Button> {
 public:
  ButtonWidget(ViewContext& context, QWidget* parent);

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  [[nodiscard]] QWidget& accessibleWidget() override;

 private:
  class Control;

  Control* control_;
};

}  // namespace morla::linux
