#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "view/View.h"

namespace morla::linux {

/// What the widgets of one tree share.
struct ViewContext {
  MainLoop& loop;
  /// How many widgets have been made, changed or removed.
  std::size_t changes = 0;
  /// How many actions of the tree are under way: the widgets must live until they have returned.
  int actionsUnderWay = 0;
};

/// What a widget asks of its place, in points. Between the smallest and the natural size it shows less.
struct Needs {
  QSize smallest;
  QSize natural;
  bool growsWide = false;  ///< takes more where there is more
  bool growsHigh = false;
};

/// The native widget of one node of a view. Its padding, frame and background are done here, what the node contains by
/// the derived classes. A widget never resizes itself: the root arranges the whole tree after a change. Main thread.
class NodeWidget : public QWidget {
 public:
  NodeWidget(ViewContext& context, QWidget* parent) : QWidget(parent), context_(context) {}

  /// Shows `node`, whose content is of this widget's kind; changes nothing where it says the same as before.
  void adopt(view::Node const& node);

  [[nodiscard]] std::size_t kind() const { return kind_; }
  [[nodiscard]] std::string const& key() const { return key_; }
  [[nodiscard]] Needs needs() const;
  /// Puts what is inside where it belongs in this widget's present size.
  void arrange() { arrangeContent(contentPlace()); }
  /// Taken out of the tree. It may be in the middle of an event, so it goes a little later.
  void retire();

 protected:
  virtual void adoptContent(view::Node::Content const& content) = 0;
  [[nodiscard]] virtual Needs contentNeeds() const = 0;
  virtual void arrangeContent(QRect const& /*place*/) {}
  virtual void paintContent(QPainter& /*painter*/, QRect const& /*place*/) {}
  /// What is told to screen readers about this node.
  [[nodiscard]] virtual QWidget& accessibleWidget() { return *this; }

  void paintEvent(QPaintEvent* event) override;

  [[nodiscard]] ViewContext& context() const { return context_; }
  /// Counts the change and paints anew.
  void didChange();
  /// Runs what the user asked for. It may set another tree or close the panel.
  void perform(std::function<void()> const& action);
  /// Runs `restore` when the tree that follows from an action must have come, unless the widget has gone by then.
  void afterTheNextTree(std::function<void()> restore);

 private:
  void adoptModifiers(view::Node const& node);
  [[nodiscard]] QRect contentPlace() const;

  ViewContext& context_;
  std::size_t kind_ = 0;
  std::string key_;
  std::string label_;
  std::string tooltip_;
  view::Edges padding_;
  view::Frame frame_;
  std::optional<view::RoundedRect> background_;
  bool isNodeEnabled_ = true;
  bool isNodeHidden_ = false;
  Lifetime life_;
};

/// A widget whose content is one value without children.
template <typename Content>
class LeafWidget : public NodeWidget {
 public:
  using NodeWidget::NodeWidget;

 protected:
  void adoptContent(view::Node::Content const& content) final {
    auto const& next = std::get<Content>(content);
    bool const changed = !hasContent_ || !(content_ == next);
    // Also what counts as equal: the actions are those of the tree that was set last.
    content_ = next;
    hasContent_ = true;
    if (!changed) return;
    contentDidChange();
    didChange();
  }
  virtual void contentDidChange() {}

  [[nodiscard]] Content const& content() const { return content_; }

 private:
  Content content_;
  bool hasContent_ = false;
};

/// The widget for this kind of node, hidden and empty.
[[nodiscard]] NodeWidget* makeNodeWidget(ViewContext& context, view::Node const& node, QWidget* parent);

[[nodiscard]] int wholePoints(double value);

}  // namespace morla::linux
