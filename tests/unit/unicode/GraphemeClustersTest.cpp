#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

using testing::ElementsAreArray;

struct ClusterRow {
  char const* label;
  std::vector<std::string> clusters;  ///< joined, they are the text
};

std::vector<ClusterRow> const kRows{
    {"empty text", {}},
    {"ASCII", {"I", "S", "O", " ", "1"}},
    {"line ends", {"a", "\r\n", "b", "\n", "\r", "\t", "c"}},
    {"line feed, then carriage return", {"\n", "\r"}},
    {"two line ends", {"\r\n", "\r\n"}},
    {"composed letter", {"\u00E9", "a"}},
    {"combining mark", {"e\u0301", "a"}},
    {"two combining marks", {"q\u0307\u0323", "q"}},
    {"mark at the start", {"\u0301", "a"}},
    {"mark after a line end", {"a", "\r\n", "\u0301"}},
    {"mark after a control character", {"\u200B", "\u0301"}},
    {"zero-width non-joiner extends", {"a\u200C", "b"}},
    {"joiner between letters", {"a\u200D", "b"}},
    {"emoji", {"🎞", "📷"}},
    {"emoji with a variation selector", {"❤\uFE0F", "a"}},
    {"emoji with a skin tone", {"👋\U0001F3FD", "a"}},
    {"family of four", {"👩\u200D👩\u200D👧\u200D👦", "a"}},
    {"skin tone and joiner", {"👩\U0001F3FD\u200D🚀", "🚀"}},
    {"variation selector and joiner", {"🏳\uFE0F\u200D🌈", "a"}},
    {"joiner, then a letter", {"👩\u200D", "a"}},
    {"letter, joiner, emoji", {"a\u200D", "👩"}},
    {"two joiners", {"👩\u200D\u200D", "👩"}},
    {"joiner, mark, emoji", {"👩\u200D\u0301", "👩"}},
    {"keycap", {"1\uFE0F\u20E3", "2"}},
    {"flag", {"🇫🇷", "a"}},
    {"two flags", {"🇫🇷", "🇩🇪"}},
    {"three halves of flags", {"🇫🇷", "🇩", "a"}},
    {"flags apart", {"🇫", "a", "🇫🇷", "🇩"}},
    {"mark between halves", {"🇫\u0301", "🇷"}},
    {"flag of tags", {"🏴\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F", "a"}},
    {"Hangul letters", {"\u1112\u1161\u11AB", "\u1112\u1161"}},
    {"Hangul syllables", {"한", "국"}},
    {"open Hangul syllable and a trailing letter", {"\uD558\u11AB", "\u1112"}},
    {"open Hangul syllable and a vowel", {"\uD558\u1161"}},
    {"closed Hangul syllable and a vowel", {"\uD55C", "\u1161"}},
    {"closed Hangul syllable and a trailing letter", {"\uD55C\u11AB"}},
    {"leading Hangul letter and a syllable", {"\u1112\uD558", "\uD558"}},
    {"trailing Hangul letter and a vowel", {"\u11AB", "\u1161"}},
    {"leading Hangul letter and a trailing one", {"\u1112", "\u11AB"}},
    {"Devanagari vowel sign", {"\u0928\u093F", "\u0928"}},
    {"Tamil, vowel sign around its base", {"\u0B95\u0BCA", "\u0B95"}},
    {"Bengali vowel sign that extends", {"\u0995\u09BE", "a"}},
    {"Thai AM", {"\u0E01\u0E33", "\u0E01"}},
    {"Myanmar sign that stands alone", {"\u1000", "\u102B"}},
    {"Arabic number sign", {"\u0600\u0661", "\u0661"}},
    {"number sign before a line end", {"\u0600", "\n"}},
    {"ideographs", {"東", "京"}},
    {"ill-formed bytes", {"a", "\xFF", "\xE2", "\x82", "b"}},
    {"mark after an ill-formed byte", {"\xFF", "\u0301"}},
};

std::string joined(std::vector<std::string> const& parts) {
  std::string text;
  for (auto const& part : parts) text += part;
  return text;
}

TEST(GraphemeClusters, AreWhatAPersonCounts) {
  for (auto const& row : kRows) {
    auto const text = joined(row.clusters);
    EXPECT_THAT(graphemeClusters(text), ElementsAreArray(row.clusters)) << row.label;
  }
}

TEST(GraphemeClusters, AreViewsIntoTheText) {
  std::string const text = "e\u0301a";
  auto const clusters = graphemeClusters(text);
  ASSERT_EQ(clusters.size(), 2U);
  EXPECT_EQ(clusters[0].data(), text.data());
  EXPECT_EQ(clusters[1].data(), text.data() + 3);
}

TEST(GraphemeClusters, SeparateEveryPairOfAsciiButTheLineEnd) {
  for (char a = 0; a >= 0 && a < 0x7F; ++a) {
    for (char b = 0; b >= 0 && b < 0x7F; ++b) {
      std::size_t const expected = a == '\r' && b == '\n' ? 1 : 2;
      ASSERT_EQ(graphemeClusters(std::string{a, b}).size(), expected) << int{a} << ' ' << int{b};
    }
  }
}

}  // namespace
}  // namespace morla::unicode
