#include "platform/macos/nodes/RenderedTree.h"

#include "platform/macos/Rects.h"

namespace morla::macos {
namespace {

Surroundings outermost(MainLoop& loop) {
  return {loop, true, std::nullopt, 0};
}

}  // namespace

RenderedTree::RenderedTree(MainLoop& loop) : loop_(loop), frame_([[MORLAPlaceView alloc] initWithFrame:nsRect({})]) {
  NSView* const root = root_.view();
  frame_.clicks = Clicks::children;
  frame_.content = root;
  [frame_ addSubview:root];
  [NSLayoutConstraint activateConstraints:@[
    [root.leadingAnchor constraintEqualToAnchor:frame_.leadingAnchor],
    [root.topAnchor constraintEqualToAnchor:frame_.topAnchor],
    withPriority(kRoot, [root.widthAnchor constraintEqualToAnchor:frame_.widthAnchor]),
    withPriority(kRoot, [root.heightAnchor constraintEqualToAnchor:frame_.heightAnchor]),
  ]];
}

void RenderedTree::show(view::Node const& tree) {
  root_.update(tree, outermost(loop_));
}

Size fittingSize(view::Node const& tree, MainLoop& loop) {
  RenderedNode root;
  root.update(tree, outermost(loop));
  NSSize const size = root.view().fittingSize;
  return {size.width, size.height};
}

}  // namespace morla::macos
