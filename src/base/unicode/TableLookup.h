#pragma once

#include <algorithm>
#include <span>

#include "base/unicode/UnicodeTables.h"

namespace morla::unicode {

/// The range that holds `codePoint`, or null.
template <typename Range>
[[nodiscard]] Range const* findRange(std::span<Range const> ranges, char32_t codePoint) {
  auto const found = std::ranges::lower_bound(ranges, codePoint, {}, &Range::last);
  return found != ranges.end() && found->first <= codePoint ? &*found : nullptr;
}

/// The mapping of `codePoint`, or null.
[[nodiscard]] inline CodePointMapping const* findMapping(std::span<CodePointMapping const> mappings,
                                                         char32_t codePoint) {
  auto const found = std::ranges::lower_bound(mappings, codePoint, {}, &CodePointMapping::codePoint);
  return found != mappings.end() && found->codePoint == codePoint ? &*found : nullptr;
}

/// Calls `use` with each code point of a mapping's target.
template <typename Use>
void forEachTarget(CodePointMapping const& mapping, Use const& use) {
  for (char32_t const codePoint : mapping.target) {
    if (codePoint == 0) return;
    use(codePoint);
  }
}

}  // namespace morla::unicode
