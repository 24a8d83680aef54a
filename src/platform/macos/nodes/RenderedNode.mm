#include "platform/macos/nodes/RenderedNode.h"

#include <utility>

#include "platform/macos/Rects.h"
#include "platform/macos/nodes/Look.h"

namespace morla::macos {
namespace {

void frameAlong(NSMutableArray<NSLayoutConstraint*>* list, NSLayoutDimension* extent, std::optional<double> fixed,
                std::optional<double> smallest) {
  if (fixed) [list addObject:withPriority(kFixed, [extent constraintEqualToConstant:*fixed])];
  if (smallest) [list addObject:withPriority(kFixed, [extent constraintGreaterThanOrEqualToConstant:*smallest])];
}

NSArray<NSLayoutConstraint*>* constraintsToFill(NSView* inner, NSView* outer) {
  NSMutableArray<NSLayoutConstraint*>* const list = [NSMutableArray array];
  fill(list, horizontalSpan(inner), horizontalSpan(outer), 0, 0);
  fill(list, verticalSpan(inner), verticalSpan(outer), 0, 0);
  return list;
}

}  // namespace

RenderedNode::RenderedNode() : place_([[MORLAPlaceView alloc] initWithFrame:nsRect({})]) {
  place_.translatesAutoresizingMaskIntoConstraints = NO;
}

void RenderedNode::update(view::Node const& node, Surroundings const& surroundings) {
  auto inner = surroundings;
  // What is hidden takes no keys either.
  inner.isEnabled = surroundings.isEnabled && node.isEnabled && !node.isHidden;
  if (differs(kind_, std::optional(node.content.index()))) replaceContent(node.content, inner);
  content_->update(node.content, inner);
  if (differs(label_, node.accessibilityLabel)) describe(label_);
  if (differs(tooltip_, node.tooltip)) place_.toolTip = tooltip_.empty() ? nil : shownText(tooltip_);
  if (differs(isHidden_, node.isHidden)) place_.concealed = isHidden_;
  if (differs(background_, node.background)) setBackground(background_);
  arrange(node, surroundings);
}

void RenderedNode::replaceContent(view::Node::Content const& content, Surroundings const& surroundings) {
  if (content_ != nullptr) {
    [content_->view() removeFromSuperview];
    retire(surroundings.loop, std::move(content_));
  }
  content_ = makeContent(content, surroundings);
  NSView* const view = content_->view();
  view.translatesAutoresizingMaskIntoConstraints = NO;
  [place_ addSubview:view];
  place_.content = view;
  place_.clicks = content_->clicks();
  arrangement_.reset();
  label_.clear();
  if (content_->labelledRole() != nil) describe(label_);
}

/// What has no words of its own is there for a screen reader only with a label.
void RenderedNode::describe(std::string const& label) {
  NSView* const view = content_->view();
  NSAccessibilityRole const role = content_->labelledRole();
  if (role != nil) {
    [view setAccessibilityElement:!label.empty()];
    [view setAccessibilityRole:label.empty() ? nil : role];
  }
  [view setAccessibilityLabel:label.empty() ? nil : shownText(label)];
}

void RenderedNode::setBackground(std::optional<view::RoundedRect> const& background) {
  if (!background) {
    [shape_ removeFromSuperview];
    shape_ = nil;
    return;
  }
  MORLAShapeView* shape = shape_;
  if (shape == nil) {
    shape = [[MORLAShapeView alloc] initWithFrame:nsRect({})];
    shape.translatesAutoresizingMaskIntoConstraints = NO;
    [place_ addSubview:shape positioned:NSWindowBelow relativeTo:nil];
    [NSLayoutConstraint activateConstraints:constraintsToFill(shape, place_)];
    place_.background = shape;
    shape_ = shape;
  }
  shape.fill = colour(background->fill);
  shape.alphaValue = background->fill.opacity;
  shape.radius = background->radius;
  shape.hasContinuousCorners = background->corners == view::Corners::continuous;
}

void RenderedNode::arrange(view::Node const& node, Surroundings const& surroundings) {
  Arrangement const next{
      node.padding,
      node.frame,
      stretches(node, Axis::horizontal),
      stretches(node, Axis::vertical),
      content_->fills(Axis::horizontal),
      content_->fills(Axis::vertical),
  };
  if (!differs(arrangement_, std::optional(next))) return;
  NSMutableArray<NSLayoutConstraint*>* const list = [NSMutableArray array];
  auto const place = [&](Axis axis, bool isStretching, bool isFilling, auto inner, auto outer, double before,
                         double after) {
    content_->setHugging(axis, isStretching ? kStretch : kHug);
    if (isFilling) {
      fill(list, inner, outer, before, after);
    } else {
      centre(list, inner, outer, before, after, isStretching ? kStretch : hugging(surroundings.depth));
    }
  };
  NSView* const content = content_->view();
  auto const& padding = next.padding;
  place(Axis::horizontal, next.stretchesHorizontally, next.fillsHorizontally, horizontalSpan(content),
        horizontalSpan(place_), padding.leading, padding.trailing);
  place(Axis::vertical, next.stretchesVertically, next.fillsVertically, verticalSpan(content), verticalSpan(place_),
        padding.top, padding.bottom);
  frameAlong(list, place_.widthAnchor, next.frame.width, next.frame.minWidth);
  frameAlong(list, place_.heightAnchor, next.frame.height, next.frame.minHeight);
  constraints_.replace(list);
}

bool ChildNodes::update(std::vector<view::Node> const& children, Surroundings const& surroundings) {
  auto identities = identitiesOf(children);
  auto const matches = matchChildren(identities_, identities);
  bool areOthers = children.size() != nodes_.size();
  std::vector<std::unique_ptr<RenderedNode>> nodes;
  nodes.reserve(children.size());
  for (auto const& match : matches) {
    areOthers = areOthers || match != nodes.size();
    nodes.push_back(match ? std::move(nodes_[*match]) : std::make_unique<RenderedNode>());
  }
  for (auto& left : nodes_) {
    if (left != nullptr) retire(surroundings.loop, std::move(left));
  }
  nodes_ = std::move(nodes);
  identities_ = std::move(identities);
  for (std::size_t i = 0; i < children.size(); ++i) nodes_[i]->update(children[i], surroundings);
  return areOthers;
}

NSArray<NSView*>* ChildNodes::views() const {
  NSMutableArray<NSView*>* const list = [NSMutableArray array];
  for (auto const& node : nodes_) [list addObject:node->view()];
  return list;
}

}  // namespace morla::macos
