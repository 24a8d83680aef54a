#pragma once

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

class SpacerWidget : public LeafWidget<view::Spacer> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override { return {QSize(0, 0), QSize(0, 0)}; }
};

/// Its stack gives it the whole breadth.
class DividerWidget : public LeafWidget<view::Divider> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override { return {QSize(1, 1), QSize(1, 1)}; }
  void paintContent(QPainter& painter, QRect const& place) override;
};

class SymbolWidget : public LeafWidget<view::Symbol> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override;
  void paintContent(QPainter& painter, QRect const& place) override;
};

class CanvasWidget : public LeafWidget<view::Canvas> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override;
  void paintContent(QPainter& painter, QRect const& place) override;
};

class DiscWidget : public LeafWidget<view::Disc> {
 public:
  using LeafWidget::LeafWidget;

 protected:
  [[nodiscard]] Needs contentNeeds() const override;
  void paintContent(QPainter& painter, QRect const& place) override;
};

}  // namespace morla::linux
