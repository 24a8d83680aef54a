#pragma once

#include <compare>
#include <string>
#include <string_view>

#include "applescript/RunState.h"
#include "applescript/SyntaxTree.h"

namespace morla::applescript {

/// The code point at `position` of well-formed text, and how many bytes it takes; a stray byte stands for itself.
struct CodePoint {
  char32_t value;
  std::size_t bytes;
};
[[nodiscard]] CodePoint codePointAt(std::string_view text, std::size_t position);

/// Text in the form in which two texts that count as equal are the same bytes.
[[nodiscard]] std::string folded(std::string_view text, Considerations considerations);

/// Never an error: values of different classes are unequal, except that numbers are compared as numbers. A reference
/// equals only a reference to the same item.
[[nodiscard]] bool isEqual(Datum const& a, Datum const& b, RunState const& state);

/// `left op right` for all comparison operators; the right operand is coerced to the left one's class where the
/// operator orders or searches, -1700 when it cannot be.
[[nodiscard]] bool compare(ComparisonOperator operation, Datum const& left, Datum const& right, RunState& state);

}  // namespace morla::applescript
