#pragma once

#include <string>
#include <variant>
#include <vector>

#include "base/Geometry.h"
#include "view/Drawing.h"

namespace morla::view {

struct Node;

/// Children on top of each other, the first at the back, each centred.
struct ZStack {
  std::vector<Node> children;
};

/// A drawing at its own size.
struct Canvas {
  Drawing drawing;
};

/// One node of a view, which is a function from state to such a tree. A renderer walks the tree and makes or updates
/// native widgets; it takes no decision of the product.
struct Node {
  std::variant<ZStack, Canvas> content;
  /// What a screen reader says; empty for what is decoration only.
  std::string accessibilityLabel;
};

/// The tree as text, one node a line, indented by two blanks a level: what golden files hold.
[[nodiscard]] std::string dump(Node const& root);

}  // namespace morla::view
