#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

/// Turns at once under the user's finger, and back where the tree does not follow.
class ToggleWidget : public LeafWidget<view::Toggle> {
 public:
  ToggleWidget(ViewContext& context, QWidget* parent);

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  [[nodiscard]] QWidget& accessibleWidget() override;

 private:
  class Control;

  void followTree();

  Control* control_;
  /// While it is the tree that turns the switch, not the user.
  bool isFollowing_ = false;
  bool hasAppeared_ = false;
};

}  // namespace morla::linux
