#pragma once

#include <vector>

#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

/// What one child asks of the length of its stack.
struct LengthNeed {
  int smallest = 0;
  int natural = 0;
  bool grows = false;
};

/// How long each child becomes. What is to spare goes to those that grow, in equal parts; what is missing is taken
/// from the longest, as long as they may become smaller.
[[nodiscard]] std::vector<int> sharedLengths(std::vector<LengthNeed> const& needs, int available);

/// A node with children: matches them with the children of the tree before, so that each keeps its widget.
class StackWidget : public NodeWidget {
 public:
  using NodeWidget::NodeWidget;

  [[nodiscard]] std::vector<NodeWidget*> const& children() const { return children_; }

 protected:
  void adoptChildren(std::vector<view::Node> const& nodes);

 private:
  std::vector<NodeWidget*> children_;
};

/// Children in a line along one axis.
class LineWidget : public StackWidget {
 public:
  LineWidget(ViewContext& context, QWidget* parent, Qt::Orientation axis) : StackWidget(context, parent), axis_(axis) {}

 protected:
  /// Where in the breadth of the line a child stands that does not fill it.
  enum class Side { start, middle, end };

  void adoptLine(std::vector<view::Node> const& nodes, double spacing, Side side);
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;

 private:
  [[nodiscard]] int along(QSize size) const { return axis_ == Qt::Horizontal ? size.width() : size.height(); }
  [[nodiscard]] int across(QSize size) const { return axis_ == Qt::Horizontal ? size.height() : size.width(); }
  [[nodiscard]] QSize sized(int along, int across) const {
    return axis_ == Qt::Horizontal ? QSize(along, across) : QSize(across, along);
  }
  [[nodiscard]] bool growsAlong(NodeWidget const& child, Needs const& needs) const;
  [[nodiscard]] bool growsAcross(Needs const& needs) const {
    return axis_ == Qt::Horizontal ? needs.growsHigh : needs.growsWide;
  }
  [[nodiscard]] int gaps() const;

  Qt::Orientation axis_;
  double spacing_ = 0;
  Side side_ = Side::middle;
};

class RowWidget : public LineWidget {
 public:
  RowWidget(ViewContext& context, QWidget* parent) : LineWidget(context, parent, Qt::Horizontal) {}

 protected:
  void adoptContent(view::Node::Content const& content) override;
};

class ColumnWidget : public LineWidget {
 public:
  ColumnWidget(ViewContext& context, QWidget* parent) : LineWidget(context, parent, Qt::Vertical) {}

 protected:
  void adoptContent(view::Node::Content const& content) override;
};

/// Children on top of each other.
class PileWidget : public StackWidget {
 public:
  using StackWidget::StackWidget;

 protected:
  void adoptContent(view::Node::Content const& content) override;
  [[nodiscard]] Needs contentNeeds() const override;
  void arrangeContent(QRect const& place) override;
};

}  // namespace morla::linux
