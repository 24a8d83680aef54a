#include "shortcuts/Chord.h"

#include <gmock/gmock.h>

#include "platform/fake/FakeSystem.h"

namespace morla::shortcuts {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ModifierMask, HasOneBitForEachOfTheFourModifiers) {
  EXPECT_EQ(modifierMask(platform::kCommandFlag), 256);
  EXPECT_EQ(modifierMask(platform::kShiftFlag), 512);
  EXPECT_EQ(modifierMask(platform::kOptionFlag), 2048);
  EXPECT_EQ(modifierMask(platform::kControlFlag), 4096);
  EXPECT_EQ(
      modifierMask(platform::kCommandFlag | platform::kShiftFlag | platform::kOptionFlag | platform::kControlFlag),
      256 + 512 + 2048 + 4096);
}

TEST(ModifierMask, LeavesCapsLockAndAllOtherFlagsOut) {
  auto const others = ~std::uint64_t{0x1E0000};
  EXPECT_EQ(modifierMask(platform::ModifierFlags{others}), 0);
  EXPECT_EQ(modifierMask(platform::kCapsLockFlag | platform::kCommandFlag), kCommand);
}

TEST(ModifierMask, ComesBackFromTheFlagsOfEachCombination) {
  for (int combination = 0; combination < 16; ++combination) {
    ModifierMask mask = 0;
    if ((combination & 1) != 0) mask |= kCommand;
    if ((combination & 2) != 0) mask |= kShift;
    if ((combination & 4) != 0) mask |= kOption;
    if ((combination & 8) != 0) mask |= kControl;
    EXPECT_EQ(modifierMask(modifierFlags(mask)), mask);
    EXPECT_EQ(modifierFlags(mask | 0x400 | 1), modifierFlags(mask)) << "bits that are no modifier";
  }
}

TEST(ChordKeys, AreJoinedInAscendingOrder) {
  EXPECT_EQ(joinedKeys({}), "");
  EXPECT_EQ(joinedKeys({"F5"}), "F5");
  EXPECT_EQ(joinedKeys({"B", "A", "Espace"}), "A+B+Espace");
  EXPECT_EQ(joinedKeys({"É", "Z"}), "Z+É");
}

TEST(ChordKeys, AreSplitAtEachSeparator) {
  EXPECT_THAT(splitKeys(""), IsEmpty());
  EXPECT_THAT(splitKeys("F5"), ElementsAre("F5"));
  EXPECT_THAT(splitKeys("A+B+Espace"), ElementsAre("A", "B", "Espace"));
  EXPECT_THAT(splitKeys("A+A"), ElementsAre("A"));
}

TEST(ChordKeys, DoNotBringThePlusKeyBack) {
  EXPECT_THAT(splitKeys(joinedKeys({"+"})), ElementsAre(""));
  EXPECT_THAT(splitKeys(joinedKeys({"+", "A"})), ElementsAre("", "A"));
}

TEST(StoredChord, IsEmptyWhereTheDefaultsHoldNothingOrAnotherType) {
  fake::FakeUserDefaults defaults;
  EXPECT_EQ(load(kAirdropChord, defaults).characters, "");
  EXPECT_EQ(load(kAirdropChord, defaults).modifiers, 0);
  defaults.values["airdropHotkeyChars"] = std::int64_t{7};
  defaults.values["airdropHotkeyModifiers"] = std::string("256");
  EXPECT_EQ(load(kAirdropChord, defaults).characters, "");
  EXPECT_EQ(load(kAirdropChord, defaults).modifiers, 0);
}

TEST(StoredChord, StandsUnderTheKeysOfItsChord) {
  fake::FakeUserDefaults defaults;
  store(kMirrorChord, {"A+B", 256}, defaults);
  store(kAirdropChord, {"C", 512}, defaults);
  store(kCaptureOneFolderChord, {"D", 0}, defaults);
  EXPECT_EQ(defaults.text("hotkeyChars"), "A+B");
  EXPECT_EQ(defaults.integer("hotkeyModifiers"), 256);
  EXPECT_EQ(defaults.text("airdropHotkeyChars"), "C");
  EXPECT_EQ(defaults.integer("airdropHotkeyModifiers"), 512);
  EXPECT_EQ(defaults.text("captureOneFolderHotkeyChars"), "D");
  EXPECT_EQ(defaults.integer("captureOneFolderHotkeyModifiers"), 0);
}

}  // namespace
}  // namespace morla::shortcuts
