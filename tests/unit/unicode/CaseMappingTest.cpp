#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

struct CaseRow {
  char const* label;
  std::string text;
  std::string lower;
  std::string upper;
  std::string folded;
};

std::vector<CaseRow> const kRows{
    {"empty text", "", "", "", ""},
    {"ASCII", "Capture One 23 @[`{", "capture one 23 @[`{", "CAPTURE ONE 23 @[`{", "capture one 23 @[`{"},
    {"French accents", "Éprouvé À ÇŒ", "éprouvé à çœ", "ÉPROUVÉ À ÇŒ", "éprouvé à çœ"},
    {"sharp s", "Straße", "straße", "STRASSE", "strasse"},
    {"capital sharp s", "ẞ", "ß", "ẞ", "ss"},
    {"capital I with dot", "İ", "i\u0307", "İ", "i\u0307"},
    {"small dotless i", "ı", "ı", "I", "ı"},
    {"n preceded by apostrophe", "ŉ", "ŉ", "ʼN", "ʼn"},
    {"ligature ffi", "ﬃ", "ﬃ", "FFI", "ffi"},
    {"long s", "ſ", "ſ", "S", "s"},
    {"micro sign", "µ", "µ", "Μ", "μ"},
    {"y with diaeresis, whose capital is far away", "ÿ", "ÿ", "Ÿ", "ÿ"},
    {"Greek, sigma at the end of a word", "ΟΔΥΣΣΕΥΣ ς", "οδυσσευσ ς", "ΟΔΥΣΣΕΥΣ Σ", "οδυσσευσ σ"},
    {"Greek with three code points in upper case", "\u0390", "\u0390", "\u0399\u0308\u0301", "\u03B9\u0308\u0301"},
    {"Greek with iota subscript", "ᾳ", "ᾳ", "ΑΙ", "αι"},
    {"Cherokee, which folds to capitals", "Ꭰꭰ", "ꭰꭰ", "ᎠᎠ", "ᎠᎠ"},
    {"Deseret, beyond 16 bits", "𐐀𐐨", "𐐨𐐨", "𐐀𐐀", "𐐨𐐨"},
    {"Kelvin sign", "\u212A", "k", "\u212A", "k"},
    {"titlecase letter", "ǅ", "ǆ", "Ǆ", "ǆ"},
    {"between the steps of a range", "ĸ", "ĸ", "ĸ", "ĸ"},
    {"script without case", "東京 서울 🎞", "東京 서울 🎞", "東京 서울 🎞", "東京 서울 🎞"},
    {"zero byte", std::string("A\0B", 3), std::string("a\0b", 3), std::string("A\0B", 3), std::string("a\0b", 3)},
    {"ill-formed bytes", "A\xFF\xC3(\xE2\x82", "a\xFF\xC3(\xE2\x82", "A\xFF\xC3(\xE2\x82", "a\xFF\xC3(\xE2\x82"},
};

TEST(CaseMapping, MapsToLowerCase) {
  for (auto const& row : kRows) EXPECT_EQ(lowercased(row.text), row.lower) << row.label;
}

TEST(CaseMapping, MapsToUpperCase) {
  for (auto const& row : kRows) EXPECT_EQ(uppercased(row.text), row.upper) << row.label;
}

TEST(CaseMapping, FoldsCase) {
  for (auto const& row : kRows) EXPECT_EQ(caseFolded(row.text), row.folded) << row.label;
}

TEST(CaseMapping, MapsEveryAsciiCharacterAsTheCLocaleDoes) {
  for (char c = 0; c != '\x7F'; ++c) {
    bool const isUpper = c >= 'A' && c <= 'Z';
    bool const isLower = c >= 'a' && c <= 'z';
    auto const lower = std::string(1, isUpper ? static_cast<char>(c + 32) : c);
    auto const upper = std::string(1, isLower ? static_cast<char>(c - 32) : c);
    EXPECT_EQ(lowercased(std::string(1, c)), lower) << int{c};
    EXPECT_EQ(uppercased(std::string(1, c)), upper) << int{c};
    EXPECT_EQ(caseFolded(std::string(1, c)), lower) << int{c};
  }
}

}  // namespace
}  // namespace morla::unicode
