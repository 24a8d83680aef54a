#include "shortcuts/ChordMatcher.h"

#include <gmock/gmock.h>

#include "unit/shortcuts/Keys.h"

namespace morla::shortcuts {
namespace {

using platform::kCapsLockFlag;
using platform::kCommandFlag;
using platform::kControlFlag;
using platform::kOptionFlag;
using platform::kShiftFlag;
using platform::TapDecision;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ChordMatcher::Outcome kPassed{};
constexpr ChordMatcher::Outcome kSwallowed{.decision = TapDecision::swallow};
constexpr ChordMatcher::Outcome kFired{.decision = TapDecision::swallow, .isFired = true};
constexpr ChordMatcher::Outcome kLastReleased{.decision = TapDecision::swallow, .isReleased = true};
constexpr ChordMatcher::Outcome kStartedAnew{.isReleased = true};

ChordMatcher matcherOf(KeySet characters, ModifierMask modifiers) {
  ChordMatcher matcher;
  matcher.setModifiers(modifiers);
  matcher.setCharacters(std::move(characters));
  return matcher;
}

TEST(ChordMatcher, FiresOnceWhenTheLastMissingKeyGoesDown) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(flagsChanged(kCommandFlag)), kStartedAnew);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kFired);
}

TEST(ChordMatcher, FiresInEitherOrderOfTheKeys) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kFired);
}

TEST(ChordMatcher, AThirdKeyPassesAndDoesNotDisturbTheChord) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("c", kCommandFlag)), kPassed);
  EXPECT_EQ(matcher.handle(up("c", kCommandFlag)), kPassed);
  EXPECT_THAT(matcher.pressedChars(), ElementsAre("A"));
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kFired);
}

TEST(ChordMatcher, AutoRepeatsAreSwallowedAndFireNothing) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(repeat("a", kCommandFlag)), kSwallowed);
  EXPECT_THAT(matcher.pressedChars(), IsEmpty()) << "a repeat is no press";
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kFired);
  EXPECT_EQ(matcher.handle(repeat("b", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(repeat("a", kCommandFlag)), kSwallowed);
}

TEST(ChordMatcher, ShiftPressedWhileTheKeysAreHeldStartsTheChordAnew) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(flagsChanged(kCommandFlag | kShiftFlag)), kStartedAnew);
  EXPECT_THAT(matcher.pressedChars(), IsEmpty());
  EXPECT_EQ(matcher.handle(flagsChanged(kCommandFlag)), kStartedAnew);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kFired);
}

TEST(ChordMatcher, WithoutModifiersItFiresOnlyWhileNoneIsHeld) {
  auto const held = {kCommandFlag, kShiftFlag, kOptionFlag, kControlFlag};
  for (auto const flag : held) {
    auto matcher = matcherOf({"A"}, 0);
    EXPECT_EQ(matcher.handle(down("a", flag)), kPassed);
    EXPECT_EQ(matcher.handle(up("a", flag)), kPassed);
  }
  auto matcher = matcherOf({"A"}, 0);
  EXPECT_EQ(matcher.handle(down("a")), kFired);
}

TEST(ChordMatcher, CapsLockDoesNotMatter) {
  auto matcher = matcherOf({"A"}, 0);
  EXPECT_EQ(matcher.handle(down("A", kCapsLockFlag)), kFired);
  auto const function = platform::ModifierFlags{1U << 23};
  EXPECT_EQ(matcher.handle(up("A", kCapsLockFlag | function)), kLastReleased);
}

TEST(ChordMatcher, AChordKeyUnderOtherModifiersPassesAndEmptiesWhatIsPressed) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag | kShiftFlag)), kPassed);
  EXPECT_THAT(matcher.pressedChars(), IsEmpty());
  EXPECT_EQ(matcher.handle(up("b", kCommandFlag | kShiftFlag)), kPassed);
}

TEST(ChordMatcher, AnyKeyUnderOtherModifiersEmptiesWhatIsPressed) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(up("z")), kPassed);
  EXPECT_THAT(matcher.pressedChars(), IsEmpty());
}

TEST(ChordMatcher, ASingleKeyFiresOnItsPressAndBothItsEventsAreSwallowed) {
  auto matcher = matcherOf({"A"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kFired);
  EXPECT_EQ(matcher.handle(up("a", kCommandFlag)), kLastReleased);
}

TEST(ChordMatcher, OneKeyReleasedAndPressedAgainFiresAgain) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("b", kCommandFlag)), kFired);
  EXPECT_EQ(matcher.handle(up("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kFired);
}

TEST(ChordMatcher, AKeyWithoutCharactersPassesAndDisturbsNothing) {
  auto matcher = matcherOf({"A", "B"}, kCommand);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kSwallowed);
  EXPECT_EQ(matcher.handle(down("", kCommandFlag | kShiftFlag)), kPassed);
  EXPECT_THAT(matcher.pressedChars(), ElementsAre("A"));
}

TEST(ChordMatcher, CharactersOfAllScriptsAreComparedUpperCase) {
  auto matcher = matcherOf({"É"}, 0);
  EXPECT_EQ(matcher.handle(down("é")), kFired);
  auto sharp = matcherOf({"SS"}, 0);
  EXPECT_EQ(sharp.handle(down("ß")), kFired);
}

TEST(ChordMatcher, NamesOfKeysThatTypeNoneAreNeverMet) {
  struct {
    char const* name;
    char const* characters;
  } const rows[] = {{"F5", "\xEF\x9C\x88"}, {"Espace", " "}, {"→", "\xEF\x9C\x83"}, {"⎋", "\x1B"}};
  for (auto const& row : rows) {
    auto matcher = matcherOf({row.name}, 0);
    EXPECT_EQ(matcher.handle(down(row.characters)), kPassed) << row.name;
  }
}

TEST(ChordMatcher, WhatComesBackFromAPlusIsNeverMet) {
  auto matcher = matcherOf(splitKeys("+"), 0);
  EXPECT_EQ(matcher.handle(down("+")), kPassed);
  EXPECT_EQ(matcher.handle(down("")), kPassed);
}

TEST(ChordMatcher, BitsThatAreNoModifierAreNeverMet) {
  auto matcher = matcherOf({"A"}, kCommand | 1);
  EXPECT_EQ(matcher.handle(down("a", kCommandFlag)), kPassed);
}

}  // namespace
}  // namespace morla::shortcuts
