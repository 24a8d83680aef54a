#include "platform/macos/nodes/Stretching.h"

#include <algorithm>

#include "base/Overloaded.h"

namespace morla::macos {
namespace {

bool anyStretches(std::vector<view::Node> const& nodes, Axis axis) {
  return std::ranges::any_of(nodes, [axis](auto const& node) { return stretches(node, axis); });
}

bool hasSpacer(std::vector<view::Node> const& nodes) {
  return std::ranges::any_of(nodes,
                             [](auto const& node) { return std::holds_alternative<view::Spacer>(node.content); });
}

}  // namespace

bool stretches(view::HStack const& stack, Axis axis) {
  return (axis == Axis::horizontal && hasSpacer(stack.children)) || anyStretches(stack.children, axis);
}

bool stretches(view::VStack const& stack, Axis axis) {
  return (axis == Axis::vertical && hasSpacer(stack.children)) || anyStretches(stack.children, axis);
}

bool stretches(view::Node const& node, Axis axis) {
  auto const& frame = node.frame;
  bool const isHorizontal = axis == Axis::horizontal;
  if (isHorizontal ? frame.width.has_value() : frame.height.has_value()) return false;
  if (isHorizontal ? frame.fillsWidth : frame.fillsHeight) return true;
  return std::visit(Overloaded{
                        [axis](view::HStack const& stack) { return stretches(stack, axis); },
                        [axis](view::VStack const& stack) { return stretches(stack, axis); },
                        [axis](view::ZStack const& stack) { return anyStretches(stack.children, axis); },
                        [isHorizontal](view::TextField const&) { return isHorizontal; },
                        [](auto const&) { return false; },
                    },
                    node.content);
}

}  // namespace morla::macos
