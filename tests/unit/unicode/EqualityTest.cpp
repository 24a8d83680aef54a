#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

enum class Relation { equal, equalIgnoringCase, different };

struct EqualityRow {
  char const* label;
  std::string a;
  std::string b;
  Relation relation;
};

using enum Relation;

std::vector<EqualityRow> const kRows{
    {"both empty", "", "", equal},
    {"one empty", "", "a", different},
    {"ASCII", "Capture One", "Capture One", equal},
    {"ASCII in another case", "Capture One", "cAPTURE oNE", equalIgnoringCase},
    {"ASCII, another letter", "Capture One", "Capture Ore", different},
    {"ASCII, one longer", "Capture", "Capture One", different},
    {"ASCII signs that differ by the bit of case", "[@^", "{`~", different},
    {"ASCII sign and letter that differ by the bit of case", "@", "`", different},
    {"é composed and decomposed", "é", "e\u0301", equal},
    {"É and decomposed é", "É", "e\u0301", equalIgnoringCase},
    {"e with and without an accent", "e", "e\u0301", different},
    {"accent after an ASCII prefix", "Capture One e", "Capture One e\u0301", different},
    {"another accent", "e\u0300", "é", different},
    {"marks of two classes in either order", "q\u0307\u0323", "q\u0323\u0307", equal},
    {"marks of one class in either order", "q\u0301\u0300", "q\u0300\u0301", different},
    {"Angstrom sign and Å", "\u212B", "Å", equal},
    {"Ohm sign and ω", "\u2126", "ω", equalIgnoringCase},
    {"Kelvin sign and K", "\u212A", "K", equal},
    {"Kelvin sign and k", "100 \u212A", "100 k", equalIgnoringCase},
    {"Greek question mark and semicolon", "\u037E", ";", equal},
    {"Hangul syllable and its letters", "한", "\u1112\u1161\u11AB", equal},
    {"ß and SS", "Straße", "STRASSE", equalIgnoringCase},
    {"ß and capital ẞ", "ß", "ẞ", equalIgnoringCase},
    {"ß and s", "ß", "s", different},
    {"sigma and final sigma", "ΟΔΟΣ", "οδος", equalIgnoringCase},
    {"ligature ﬀ and FF", "ﬀ", "FF", equalIgnoringCase},
    {"compatibility variant is no canonical one", "①", "1", different},
    {"İ and its parts", "İ", "I\u0307", equal},
    {"İ and i", "İ", "i", different},
    {"ı and i", "ı", "i", different},
    {"Cherokee small and capital", "ꭰ", "Ꭰ", equalIgnoringCase},
    {"Deseret small and capital", "𐐨", "𐐀", equalIgnoringCase},
    {"subscript iota, whose folding is no mark, among other marks", "\u03B1\u0345\u0301", "\u03AC\u0345", equal},
    {"subscript iota in capitals", "\u1FB4", "Ά\u0399", equalIgnoringCase},
    {"the same ill-formed byte", "a\xFF", "a\xFF", equal},
    {"the same ill-formed byte after another case", "A\xFF", "a\xFF", equalIgnoringCase},
    {"other ill-formed bytes", "\xFE", "\xFF", different},
    {"a byte of Latin-1 is not its letter", "\xE9", "é", different},
    {"a stray byte is not the replacement character", "\xFF", "\uFFFD", different},
    {"overlong form of A", "\xC1\x81", "A", different},
};

TEST(Equality, HoldsUpToCanonicalEquivalence) {
  for (auto const& row : kRows) {
    EXPECT_EQ(equals(row.a, row.b), row.relation == equal) << row.label;
    EXPECT_EQ(equals(row.b, row.a), row.relation == equal) << row.label << ", the other way round";
  }
}

TEST(Equality, IgnoringCaseHoldsUpToCaseAndCanonicalEquivalence) {
  for (auto const& row : kRows) {
    EXPECT_EQ(equalsIgnoringCase(row.a, row.b), row.relation != different) << row.label;
    EXPECT_EQ(equalsIgnoringCase(row.b, row.a), row.relation != different) << row.label << ", the other way round";
  }
}

}  // namespace
}  // namespace morla::unicode
