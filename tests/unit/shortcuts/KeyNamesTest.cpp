#include "shortcuts/KeyNames.h"

#include <gtest/gtest.h>

#include "unit/shortcuts/Keys.h"

namespace morla::shortcuts {
namespace {

TEST(KeyNames, KeysThatTypeNothingToReadHaveNames) {
  struct {
    std::uint16_t code;
    char const* name;
  } const rows[] = {
      {36, "↩"},    {48, "⇥"},    {49, "Espace"}, {51, "⌫"},    {53, "⎋"},    {115, "↖"},   {116, "⇞"},
      {117, "⌦"},   {119, "↘"},   {121, "⇟"},     {123, "←"},   {124, "→"},   {125, "↓"},   {126, "↑"},
      {122, "F1"},  {120, "F2"},  {99, "F3"},     {118, "F4"},  {96, "F5"},   {97, "F6"},   {98, "F7"},
      {100, "F8"},  {101, "F9"},  {109, "F10"},   {103, "F11"}, {111, "F12"}, {105, "F13"}, {107, "F14"},
      {113, "F15"}, {106, "F16"}, {64, "F17"},    {79, "F18"},  {80, "F19"},  {90, "F20"},
  };
  for (auto const& row : rows) EXPECT_EQ(charFromEvent(down("?"), row.code), row.name) << row.code;
  EXPECT_EQ(std::size(rows), 34U);
}

TEST(KeyNames, EveryOtherKeyIsCalledByItsCharactersUpperCase) {
  EXPECT_EQ(charFromEvent(down("a"), 0), "A");
  EXPECT_EQ(charFromEvent(down("é"), 19), "É");
  EXPECT_EQ(charFromEvent(down("+"), 24), "+");
  EXPECT_EQ(charFromEvent(up("1"), 18), "1");
}

TEST(KeyNames, AKeyWithoutCharactersHasNoName) {
  EXPECT_EQ(charFromEvent(down(""), 10), "");
}

TEST(KeyNames, OnlyTheKeyCodesOfTheTableHaveNames) {
  int named = 0;
  for (std::uint16_t code = 0; code < 256; ++code) named += charFromEvent(down(""), code).empty() ? 0 : 1;
  EXPECT_EQ(named, 34);
}

}  // namespace
}  // namespace morla::shortcuts
