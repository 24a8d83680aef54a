#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

class TextFieldWidget : public LeafWidget<view::TextField> {
 public:
  TextFieldWidget(ViewContext& context, QWidget* parent);

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  [[nodiscard]] QWidget& accessibleWidget() override;

 private:
  class Control;

  void showText();

  Control* control_;
};

}  // namespace morla::linux
