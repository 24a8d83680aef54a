#pragma once

/// The 11172 precomposed Hangul syllables stand in the order of their letters, so they need no table: a syllable is
/// (leading * kVowelCount + vowel) * kTrailingCount + trailing, where trailing 0 is none.
namespace morla::unicode::hangul {

constexpr char32_t kFirstSyllable = 0xAC00;
constexpr char32_t kSyllableCount = 11172;
constexpr char32_t kFirstLeading = 0x1100;
constexpr char32_t kFirstVowel = 0x1161;
constexpr char32_t kVowelCount = 21;
/// The place of "no trailing consonant", one before the first.
constexpr char32_t kNoTrailing = 0x11A7;
constexpr char32_t kTrailingCount = 28;

[[nodiscard]] constexpr bool isSyllable(char32_t codePoint) {
  return codePoint >= kFirstSyllable && codePoint < kFirstSyllable + kSyllableCount;
}

/// The letters of a syllable; `trailing` is kNoTrailing where there is none.
struct Letters {
  char32_t leading;
  char32_t vowel;
  char32_t trailing;
};

[[nodiscard]] constexpr Letters lettersOf(char32_t syllable) {
  char32_t const index = syllable - kFirstSyllable;
  return {kFirstLeading + index / (kVowelCount * kTrailingCount), kFirstVowel + index / kTrailingCount % kVowelCount,
          kNoTrailing + index % kTrailingCount};
}

}  // namespace morla::unicode::hangul
