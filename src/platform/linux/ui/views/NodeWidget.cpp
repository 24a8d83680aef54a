#include "platform/linux/ui/views/NodeWidget.h"

#include <QPainter>
#include <QTextDocument>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Overloaded.h"
#include "platform/linux/ui/views/ButtonWidget.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/FigureWidgets.h"
#include "platform/linux/ui/views/PickerWidget.h"
#include "platform/linux/ui/views/RoundedShape.h"
#include "platform/linux/ui/views/SpinnerWidget.h"
#include "platform/linux/ui/views/StackWidgets.h"
#include "platform/linux/ui/views/TextFieldWidget.h"
#include "platform/linux/ui/views/TextWidget.h"
#include "platform/linux/ui/views/ToggleWidget.h"

namespace morla::linux {
namespace {

int framed(int length, std::optional<double> const& fixed, std::optional<double> const& least) {
  if (fixed.has_value()) return wholePoints(*fixed);
  return least.has_value() ? std::max(length, wholePoints(*least)) : length;
}

template <typename T>
bool assign(T& member, T const& value) {
  if (member == value) return false;
  member = value;
  return true;
}

}  // namespace

int wholePoints(double value) {
  return static_cast<int>(std::lround(value));
}

void NodeWidget::adopt(view::Node const& node) {
  kind_ = node.content.index();
  key_ = node.key;
  adoptModifiers(node);
  adoptContent(node.content);
}

void NodeWidget::adoptModifiers(view::Node const& node) {
  bool changed = assign(padding_, node.padding);
  changed |= assign(frame_, node.frame);
  changed |= assign(background_, node.background);
  if (assign(label_, node.accessibilityLabel)) {
    accessibleWidget().setAccessibleName(QString::fromStdString(label_));
    changed = true;
  }
  if (assign(tooltip_, node.tooltip)) {
    // The toolkit guesses whether words are markup; none of them are, and lines end where they say.
    auto const words = QString::fromStdString(tooltip_);
    setToolTip(words.isEmpty() ? words : Qt::convertFromPlainText(words, Qt::WhiteSpaceNormal));
    changed = true;
  }
  if (assign(isNodeEnabled_, node.isEnabled)) {
    setEnabled(node.isEnabled);
    changed = true;
  }
  if (assign(isNodeHidden_, node.isHidden)) {
    setVisible(!node.isHidden);
    changed = true;
  }
  if (changed) didChange();
}

Needs NodeWidget::needs() const {
  auto needs = contentNeeds();
  QSize const edges(wholePoints(padding_.leading + padding_.trailing), wholePoints(padding_.top + padding_.bottom));
  auto const frame = [&](QSize size) {
    size += edges;
    return QSize(framed(size.width(), frame_.width, frame_.minWidth),
                 framed(size.height(), frame_.height, frame_.minHeight));
  };
  needs.smallest = frame(needs.smallest);
  needs.natural = frame(needs.natural);
  needs.growsWide = !frame_.width.has_value() && (frame_.fillsWidth || needs.growsWide);
  needs.growsHigh = !frame_.height.has_value() && (frame_.fillsHeight || needs.growsHigh);
  return needs;
}

QRect NodeWidget::contentPlace() const {
  return rect().adjusted(wholePoints(padding_.leading), wholePoints(padding_.top), -wholePoints(padding_.trailing),
                         -wholePoints(padding_.bottom));
}

void NodeWidget::retire() {
  ++context_.changes;
  hide();
  deleteLater();
}

void NodeWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (background_.has_value()) {
    painter.fillPath(roundedShape(rect(), background_->radius, background_->corners),
                     toQt(background_->fill, palette()));
  }
  paintContent(painter, contentPlace());
}

void NodeWidget::didChange() {
  ++context_.changes;
  update();
}

void NodeWidget::perform(std::function<void()> const& action) {
  auto& context = context_;
  ++context.actionsUnderWay;
  action();
  --context.actionsUnderWay;
}

void NodeWidget::afterTheNextTree(std::function<void()> restore) {
  // What the action wrote has marked its view by now, and the view is described on a later turn.
  context_.loop.post(life_.weak([this, restore = std::move(restore)] { context_.loop.post(life_.weak(restore)); }));
}

NodeWidget* makeNodeWidget(ViewContext& context, view::Node const& node, QWidget* parent) {
  auto* const made =
      std::visit(Overloaded{
                     [&](view::HStack const&) -> NodeWidget* { return new RowWidget(context, parent); },
                     [&](view::VStack const&) -> NodeWidget* { return new ColumnWidget(context, parent); },
                     [&](view::ZStack const&) -> NodeWidget* { return new PileWidget(context, parent); },
                     [&](view::Spacer const&) -> NodeWidget* { return new SpacerWidget(context, parent); },
                     [&](view::Divider const&) -> NodeWidget* { return new DividerWidget(context, parent); },
                     [&](view::Text const&) -> NodeWidget* { return new TextWidget(context, parent); },
                     [&](view::Symbol const&) -> NodeWidget* { return new SymbolWidget(context, parent); },
                     [&](view::Canvas const&) -> NodeWidget* { return new CanvasWidget(context, parent); },
                     [&](view::Disc const&) -> NodeWidget* { return new DiscWidget(context, parent); },
                     [&](view::Button const&) -> NodeWidget* { return new ButtonWidget(context, parent); },
                     [&](view::Toggle const&) -> NodeWidget* { return new ToggleWidget(context, parent); },
                     [&](view::Picker const&) -> NodeWidget* { return new PickerWidget(context, parent); },
                     [&](view::TextField const&) -> NodeWidget* { return new TextFieldWidget(context, parent); },
                     [&](view::Spinner const&) -> NodeWidget* { return new SpinnerWidget(context, parent); },
                 },
                 node.content);
  made->setVisible(!node.isHidden);
  return made;
}

}  // namespace morla::linux
