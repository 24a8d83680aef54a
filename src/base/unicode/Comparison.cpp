#include <algorithm>
#include <optional>

#include "base/unicode/Unicode.h"
#include "base/unicode/Utf8.h"

namespace morla::unicode {
namespace {

/// Compares as far as ASCII goes: an answer when the texts are ASCII up to their end or their first difference, none
/// when only the tables can tell. ASCII decides for itself because nothing that follows changes an ASCII character:
/// it is never part of a decomposition's or a folding's source, and it is a base that marks are not moved across.
template <typename Same>
std::optional<bool> compareAscii(std::string_view a, std::string_view b, Same const& same) {
  auto const common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (!isAscii(a[i]) || !isAscii(b[i])) return std::nullopt;
    if (!same(a[i], b[i])) return false;
  }
  // The longer one has at least one code point more, and no rule removes a code point.
  return a.size() == b.size();
}

constexpr bool sameIgnoringCase(char a, char b) {
  if (a == b) return true;
  char const folded = static_cast<char>(a | 0x20);
  return folded == static_cast<char>(b | 0x20) && folded >= 'a' && folded <= 'z';
}

/// Decomposed before the folding as well, because a folding looks at single code points and some of them (U+0345 among
/// them, a mark that folds to a letter) must have their place among the marks first.
std::string comparisonKey(std::string_view text) {
  return canonicallyDecomposed(caseFolded(canonicallyDecomposed(text)));
}

}  // namespace

bool equals(std::string_view a, std::string_view b) {
  if (auto const answer = compareAscii(a, b, [](char x, char y) { return x == y; })) return *answer;
  return a == b || canonicallyDecomposed(a) == canonicallyDecomposed(b);
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (auto const answer = compareAscii(a, b, sameIgnoringCase)) return *answer;
  return a == b || comparisonKey(a) == comparisonKey(b);
}

}  // namespace morla::unicode
