#pragma once

#include "view/View.h"

namespace morla::macos {

enum class Axis { horizontal, vertical };

/// Whether the node takes more of its place along `axis` than its content needs, where there is more: because its frame
/// says so, or because something inside does that its own frame does not hold back.
[[nodiscard]] bool stretches(view::Node const& node, Axis axis);

/// The same of a stack alone: whether a spacer or a child of it does.
[[nodiscard]] bool stretches(view::HStack const& stack, Axis axis);
[[nodiscard]] bool stretches(view::VStack const& stack, Axis axis);

}  // namespace morla::macos
