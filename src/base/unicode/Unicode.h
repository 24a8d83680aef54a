#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text rules of the Unicode standard that the C++ library lacks. Locale-independent. All text is UTF-8; a byte that
/// belongs to no well-formed sequence stands for itself: it has no case, is equal only to itself, and is kept as it is.
/// ASCII text takes a short way through every function. The tables are of the version of Unicode that the head of
/// UnicodeTables.cpp names; code points of later versions count as unassigned. Any thread.
namespace morla::unicode {

/// The full mappings, so the length may change (İ becomes two code points, ß becomes SS). Each code point is mapped
/// without regard to its neighbours: a capital sigma becomes σ also at the end of a word.
[[nodiscard]] std::string lowercased(std::string_view text);
[[nodiscard]] std::string uppercased(std::string_view text);

/// Full case folding: two texts that differ in case only fold to the same text.
[[nodiscard]] std::string caseFolded(std::string_view text);

/// Normalization form D: canonically equivalent texts become the same bytes.
[[nodiscard]] std::string canonicallyDecomposed(std::string_view text);

/// Equal up to canonical equivalence.
[[nodiscard]] bool equals(std::string_view a, std::string_view b);
/// Equal up to case and canonical equivalence.
[[nodiscard]] bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// The text as a person counts its characters: extended grapheme clusters, in order, each a view into `text`; together
/// they are the whole text. A byte that is no text is a cluster of its own. Most of what the rules ask about a
/// character follows from its general category; the exceptions and the pictographs are lists in the generator, as of
/// Unicode 14, so a newer version of the data alone would not bring its new exceptions. The rule of Unicode 15.1 that
/// keeps Indic conjuncts together is not part of it.
[[nodiscard]] std::vector<std::string_view> graphemeClusters(std::string_view text);

[[nodiscard]] bool isWellFormed(std::string_view text);

}  // namespace morla::unicode
