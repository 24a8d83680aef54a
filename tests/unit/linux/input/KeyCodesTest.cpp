#include "platform/linux/input/KeyCodes.h"

#include <gtest/gtest.h>

namespace morla::linux {
namespace {

TEST(KeyCodes, AreMacOsNumbersOfTheSamePlace) {
  struct {
    char const* name;
    std::uint16_t code;
  } const rows[] = {{"AC01", 0},  {"AD01", 12},  {"AE01", 18},  {"SPCE", 49}, {"RTRN", 36},  {"ESC", 53},
                    {"BKSP", 51}, {"DELE", 117}, {"FK01", 122}, {"FK20", 90}, {"LEFT", 123}, {"KPEN", 76}};
  for (auto const& row : rows) EXPECT_EQ(macKeyCode(row.name), row.code) << row.name;
}

TEST(KeyCodes, OfKeysThatNoMacHasAreNone) {
  EXPECT_EQ(macKeyCode("I180"), kNoMacKey);
  EXPECT_EQ(macKeyCode(""), kNoMacKey);
  EXPECT_EQ(macCharacters(kNoMacKey, false), "");
}

TEST(KeyCodes, FunctionKeysAndArrowsTypePrivateUseCharacters) {
  EXPECT_EQ(macCharacters(macKeyCode("FK01"), false), "\uF704");
  EXPECT_EQ(macCharacters(macKeyCode("FK12"), true), "\uF70F");
  EXPECT_EQ(macCharacters(macKeyCode("FK20"), false), "\uF717");
  EXPECT_EQ(macCharacters(macKeyCode("UP"), false), "\uF700");
  EXPECT_EQ(macCharacters(macKeyCode("DELE"), false), "\uF728");
}

TEST(KeyCodes, TabIsAnotherCharacterWithShift) {
  EXPECT_EQ(macCharacters(macKeyCode("TAB"), false), "\t");
  EXPECT_EQ(macCharacters(macKeyCode("TAB"), true), "\x19");
}

TEST(KeyCodes, LettersTypeWhatTheLayoutSays) {
  EXPECT_EQ(macCharacters(macKeyCode("AC01"), false), "");
}

}  // namespace
}  // namespace morla::linux
