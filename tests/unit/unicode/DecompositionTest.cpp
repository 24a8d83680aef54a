#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

struct DecompositionRow {
  char const* label;
  std::string text;
  std::string decomposed;
};

std::vector<DecompositionRow> const kRows{
    {"empty text", "", ""},
    {"ASCII", "Capture One", "Capture One"},
    {"one mark", "é", "e\u0301"},
    {"two marks, decomposed in two steps", "ế", "e\u0302\u0301"},
    {"already decomposed", "e\u0301", "e\u0301"},
    {"singleton", "\u212B", "A\u030A"},
    {"ASCII singleton", "\u037E", ";"},
    {"four code points", "\u1F82", "\u03B1\u0313\u0300\u0345"},
    {"compatibility ideograph", "\uF900", "\u8C48"},
    {"beyond 16 bits", "\U0001D15E", "\U0001D157\U0001D165"},
    {"no compatibility mapping", "ﬁ①", "ﬁ①"},
    {"first Hangul syllable", "\uAC00", "\u1100\u1161"},
    {"Hangul syllable with a trailing consonant", "\uAC01", "\u1100\u1161\u11A8"},
    {"last Hangul syllable", "\uD7A3", "\u1112\u1175\u11C2"},
    {"right after the Hangul syllables", "\uD7A4", "\uD7A4"},
    {"marks in the wrong order", "a\u0301\u0323", "a\u0323\u0301"},
    {"marks of one class keep their order", "a\u0301\u0300\u0302", "a\u0301\u0300\u0302"},
    {"a composed base takes part in the order", "á\u0323", "a\u0323\u0301"},
    {"three classes", "a\u0345\u0301\u0334", "a\u0334\u0301\u0345"},
    {"a base separates", "a\u0301b\u0323", "a\u0301b\u0323"},
    {"a joiner of class 0 separates", "a\u0301\u034F\u0323", "a\u0301\u034F\u0323"},
    {"marks without a base", "\u0301\u0323", "\u0323\u0301"},
    {"marks at the end after a long ASCII text", "Capture One Pro\u0301\u0323", "Capture One Pro\u0323\u0301"},
    {"an ill-formed byte separates", "a\u0301\xFF\u0323", "a\u0301\xFF\u0323"},
    {"ill-formed bytes", "\xC3\xE2\x82\xED\xA0\x80", "\xC3\xE2\x82\xED\xA0\x80"},
};

TEST(Decomposition, IsCanonical) {
  for (auto const& row : kRows) EXPECT_EQ(canonicallyDecomposed(row.text), row.decomposed) << row.label;
}

TEST(Decomposition, SortsAVeryLongRunOfMarks) {
  std::string below;
  std::string above;
  std::string mixed = "a";
  for (int i = 0; i < 20000; ++i) {
    mixed += "\u0301\u0323";
    below += "\u0323";
    above += "\u0301";
  }
  EXPECT_EQ(canonicallyDecomposed(mixed), "a" + below + above);
}

struct WellFormedRow {
  char const* label;
  std::string text;
  bool isWellFormed;
};

TEST(WellFormedness, FollowsTheTableOfTheStandard) {
  std::vector<WellFormedRow> const rows{
      {"empty", "", true},
      {"ASCII", "abc", true},
      {"zero byte", std::string(1, '\0'), true},
      {"lowest of two bytes", "\xC2\x80", true},
      {"highest of two bytes", "\xDF\xBF", true},
      {"lowest of three bytes", "\xE0\xA0\x80", true},
      {"last before the surrogates", "\xED\x9F\xBF", true},
      {"first after the surrogates", "\xEE\x80\x80", true},
      {"lowest of four bytes", "\xF0\x90\x80\x80", true},
      {"last code point", "\xF4\x8F\xBF\xBF", true},
      {"overlong, two bytes", "\xC0\x80", false},
      {"overlong, two bytes, highest", "\xC1\xBF", false},
      {"overlong, three bytes", "\xE0\x9F\xBF", false},
      {"overlong, four bytes", "\xF0\x8F\xBF\xBF", false},
      {"first surrogate", "\xED\xA0\x80", false},
      {"last surrogate", "\xED\xBF\xBF", false},
      {"beyond the last code point", "\xF4\x90\x80\x80", false},
      {"lead byte that is never used", "\xF5\x80\x80\x80", false},
      {"continuation alone", "a\x80", false},
      {"cut short, two bytes", "a\xC3", false},
      {"cut short, three bytes", "\xE2\x82", false},
      {"cut short, four bytes", "\xF0\x9F\x8E", false},
      {"ASCII where a continuation is due", "\xC3(", false},
      {"lead where a continuation is due", "\xE2\x82\xC3\xA9", false},
      {"late in the text", "abc é 東 🎞 \xFF", false},
  };
  for (auto const& row : rows) EXPECT_EQ(isWellFormed(row.text), row.isWellFormed) << row.label;
}

}  // namespace
}  // namespace morla::unicode
