#pragma once

#include "applescript/RunState.h"
#include "applescript/SyntaxTree.h"

namespace morla::applescript {

/// `left op right` for the operators of numbers and for `&`.
[[nodiscard]] Datum applied(BinaryOperator operation, Datum const& left, Datum const& right, RunState& state);
/// Makes `list` what `list & more` would be.
void appendTo(ListObject& list, Datum const& more, RunState& state);
[[nodiscard]] Datum negated(Datum const& operand, RunState& state);

}  // namespace morla::applescript
