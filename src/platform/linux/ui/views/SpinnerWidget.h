#pragma once

#include <QBasicTimer>

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

/// Turns while somebody can see it, and wakes nobody otherwise.
class SpinnerWidget : public LeafWidget<view::Spinner> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override;
  void paintContent(QPainter& painter, QRect const& place) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  QBasicTimer timer_;
  int step_ = 0;
};

}  // namespace morla::linux
