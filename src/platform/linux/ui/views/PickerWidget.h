#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

class PickerControl;

/// Shows a choice at once, and goes back where the tree does not follow. Its list stays open while the tree changes.
class PickerWidget : public LeafWidget<view::Picker> {
 public:
  PickerWidget(ViewContext& context, QWidget* parent);

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  [[nodiscard]] QWidget& accessibleWidget() override;

 private:
  void didChoose(std::size_t option);

  PickerControl* control_;
};

}  // namespace morla::linux
