#pragma once

#include <array>
#include <cstdint>
#include <span>

/// The data behind Unicode.h, written by tools/generate-unicode-tables. Every table is sorted by code point and its
/// ranges do not overlap, so that each is searched by halving. Private to this folder.
namespace morla::unicode {

/// One code point becomes up to four; unused places hold 0, which nothing maps to.
struct CodePointMapping {
  char32_t codePoint;
  std::array<char32_t, 4> target;
};

/// From `first` to `last` every code point, or every second one (`step` 2), becomes itself plus `delta`. Those between
/// the steps have no mapping here.
struct CaseRange {
  char32_t first;
  char32_t last;
  std::uint32_t step;
  std::int32_t delta;
};

struct CaseTable {
  std::span<CaseRange const> ranges;
  std::span<CodePointMapping const> expansions;  ///< what becomes more than one code point
};

struct CombiningClassRange {
  char32_t first;
  char32_t last;
  std::uint8_t combiningClass;
};

/// What a code point does at the seams between grapheme clusters. Precomposed Hangul syllables are computed.
enum class GraphemeRole : std::uint8_t {
  other,
  cr,
  lf,
  control,
  extend,
  zeroWidthJoiner,
  spacingMark,
  prepend,
  regionalIndicator,
  hangulLeading,
  hangulVowel,
  hangulTrailing,
  hangulLeadingVowel,          ///< a syllable without a trailing consonant
  hangulLeadingVowelTrailing,  ///< a syllable with one
  pictographic,
};

struct GraphemeRoleRange {
  char32_t first;
  char32_t last;
  GraphemeRole role;
};

extern CaseTable const kLowercase;
extern CaseTable const kUppercase;
extern CaseTable const kCaseFolding;

/// Full canonical decompositions, in canonical order; Hangul syllables are computed.
extern std::span<CodePointMapping const> const kCanonicalDecompositions;

/// What is not listed has class 0.
extern std::span<CombiningClassRange const> const kCombiningClasses;

/// What is not listed is `other`.
extern std::span<GraphemeRoleRange const> const kGraphemeRoles;

}  // namespace morla::unicode
