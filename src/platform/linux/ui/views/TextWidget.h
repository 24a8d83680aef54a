#pragma once

#include <QString>
#include <vector>

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

class TextWidget : public LeafWidget<view::Text> {
 public:
  using LeafWidget::LeafWidget;

  /// As shown, without what an ellipsis stands for.
  [[nodiscard]] QString spoken() const;

 protected:
  void contentDidChange() override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
  void paintContent(QPainter& painter, QRect const& place) override;

 private:
  std::vector<QString> lines_;
  QSize natural_;
  /// The lines as they fit into the present place.
  std::vector<QString> fitted_;
  int fittedWidth_ = -1;
};

}  // namespace morla::linux
