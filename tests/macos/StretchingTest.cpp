#include "platform/macos/nodes/Stretching.h"

#include <gtest/gtest.h>

namespace morla::macos {
namespace {

using view::node;

void expectStretching(char const* what, view::Node const& tree, bool horizontally, bool vertically) {
  EXPECT_EQ(stretches(tree, Axis::horizontal), horizontally) << what;
  EXPECT_EQ(stretches(tree, Axis::vertical), vertically) << what;
}

view::Node row(view::Node child) {
  return node(view::HStack{{node(view::Text{}), std::move(child)}});
}
view::Node column(view::Node child) {
  return node(view::VStack{{node(view::Text{}), std::move(child)}});
}

TEST(Stretching, WhatHasASizeOfItsOwnDoesNotStretch) {
  expectStretching("text", node(view::Text{}), false, false);
  expectStretching("button", node(view::Button{}), false, false);
  expectStretching("divider", node(view::Divider{}), false, false);
  expectStretching("row", row(node(view::Toggle{})), false, false);
}

TEST(Stretching, ASpacerStretchesItsStackAlongIt) {
  expectStretching("row", row(node(view::Spacer{})), true, false);
  expectStretching("column", column(node(view::Spacer{})), false, true);
}

TEST(Stretching, WhatStretchesInsideStretchesEveryStackRoundIt) {
  expectStretching("row in a column", column(row(node(view::Spacer{}))), true, false);
  expectStretching("row in layers", node(view::ZStack{{row(node(view::Spacer{}))}}), true, false);
}

TEST(Stretching, ATextFieldIsAsWideAsItCan) {
  expectStretching("field", node(view::TextField{}), true, false);
}

TEST(Stretching, AFrameSaysSoItself) {
  expectStretching("wide", node(view::Text{}).framed({.fillsWidth = true}), true, false);
  expectStretching("high", node(view::Text{}).framed({.fillsHeight = true}), false, true);
}

TEST(Stretching, AFixedFrameHoldsBackWhatIsInside) {
  expectStretching("row", row(node(view::Spacer{})).framed({.width = 300}), false, false);
  expectStretching("column of it", column(row(node(view::Spacer{})).framed({.width = 300})), false, false);
  expectStretching("the other axis", column(node(view::Spacer{})).framed({.width = 300}), false, true);
}

}  // namespace
}  // namespace morla::macos
