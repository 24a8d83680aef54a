#include "platform/linux/input/Keymap.h"

#include <gmock/gmock.h>

#include "platform/linux/input/XcbHandle.h"
#include "unit/linux/input/PrivateServer.h"

namespace morla::linux {
namespace {

using platform::KeyEventType;

// Keycodes of X's evdev keyboards, which virtual servers have.
constexpr xcb_keycode_t kA = 38;
constexpr xcb_keycode_t kOne = 10;
constexpr xcb_keycode_t kKeypadSeven = 79;
constexpr xcb_keycode_t kKeypadEnter = 104;
constexpr xcb_keycode_t kF5 = 71;
constexpr xcb_keycode_t kShift = 50;
constexpr std::uint16_t kShiftState = 1;
constexpr std::uint16_t kLockState = 2;
constexpr std::uint16_t kControlState = 4;
constexpr std::uint16_t kAltState = 8;
constexpr std::uint16_t kNumLockState = 16;
constexpr std::uint16_t kSuperState = 64;
constexpr std::uint16_t kThirdLevelState = 128;

class KeymapTest : public testing::Test {
 protected:
  void SetUp() override {
    connection_ = connectToX();
    ASSERT_NE(connection_, nullptr);
    keymap_ = Keymap::load(connection_.get());
    ASSERT_NE(keymap_, nullptr);
  }

  [[nodiscard]] std::string typed(xcb_keycode_t key, std::uint16_t state) const {
    return keymap_->event(key, state, KeyEventType::down).charactersIgnoringModifiers;
  }

  PrivateServer server_;
  XcbConnection connection_;
  std::shared_ptr<Keymap const> keymap_;
};

TEST_F(KeymapTest, OfTheModifiersShiftAloneChangesWhatAKeyTypes) {
  EXPECT_EQ(typed(kA, 0), "a");
  EXPECT_EQ(typed(kA, kShiftState), "A");
  EXPECT_EQ(typed(kOne, kShiftState), "!");
  for (std::uint16_t const state : {kLockState, kControlState, kAltState, kNumLockState, kSuperState}) {
    EXPECT_EQ(typed(kA, state), "a") << state;
  }
}

TEST_F(KeymapTest, APressWithAltGrIsTextAndHasNoCharactersForAChord) {
  EXPECT_EQ(typed(kA, kThirdLevelState), "");
  EXPECT_EQ(typed(kA, kThirdLevelState | kShiftState), "");
  EXPECT_EQ(typed(kF5, kThirdLevelState), "");
  auto const released = keymap_->event(kA, kThirdLevelState, KeyEventType::up);
  EXPECT_EQ(released.charactersIgnoringModifiers, "a") << "it may have been pressed before AltGr";
}

TEST_F(KeymapTest, FunctionKeysTypeWhatMacOsSays) {
  EXPECT_EQ(typed(kF5, 0), "\uF708");
  EXPECT_EQ(typed(kF5, kControlState), "\uF708");
}

TEST_F(KeymapTest, TheKeypadTypesDigitsWhateverNumLockSays) {
  EXPECT_EQ(typed(kKeypadSeven, 0), "7");
  EXPECT_EQ(typed(kKeypadSeven, kNumLockState), "7");
  EXPECT_EQ(typed(kKeypadEnter, 0), "\x03");
}

TEST_F(KeymapTest, TellsWhichModifiersAreHeld) {
  EXPECT_EQ(keymap_->flags(0), platform::ModifierFlags{});
  EXPECT_EQ(keymap_->flags(kShiftState), platform::kShiftFlag);
  EXPECT_EQ(keymap_->flags(kLockState), platform::kCapsLockFlag);
  EXPECT_EQ(keymap_->flags(kControlState), platform::kControlFlag);
  EXPECT_EQ(keymap_->flags(kAltState), platform::kOptionFlag);
  EXPECT_EQ(keymap_->flags(kThirdLevelState), platform::kOptionFlag);
  EXPECT_EQ(keymap_->flags(kSuperState), platform::kCommandFlag);
  EXPECT_EQ(keymap_->flags(kNumLockState), platform::ModifierFlags{});
}

TEST_F(KeymapTest, AModifierKeyIsAChangeOfFlagsAsTheyAreAfterwards) {
  auto const pressed = keymap_->event(kShift, kControlState, KeyEventType::down);
  EXPECT_EQ(pressed.type, KeyEventType::flagsChanged);
  EXPECT_EQ(pressed.modifierFlags, platform::kShiftFlag | platform::kControlFlag);
  EXPECT_EQ(pressed.charactersIgnoringModifiers, "");
  auto const released = keymap_->event(kShift, kControlState | kShiftState, KeyEventType::up);
  EXPECT_EQ(released.type, KeyEventType::flagsChanged);
  EXPECT_EQ(released.modifierFlags, platform::kControlFlag);
}

TEST_F(KeymapTest, AWantedKeyIsWantedUnderEverySetOfLocks) {
  auto const grabs = keymap_->grabs({{"A"}, platform::kCommandFlag}, 0);
  std::set<std::uint16_t> states;
  for (auto const& grab : grabs) {
    EXPECT_EQ(grab.key, kA);
    EXPECT_EQ(keymap_->flags(grab.modifiers).bits & ~platform::kCapsLockFlag.bits, platform::kCommandFlag.bits);
    states.insert(grab.modifiers);
  }
  EXPECT_TRUE(states.contains(kSuperState));
  EXPECT_TRUE(states.contains(kSuperState | kLockState | kNumLockState));
  EXPECT_FALSE(states.contains(kSuperState | kThirdLevelState)) << "that is Option as well";
}

TEST_F(KeymapTest, NoKeyIsWantedWithAltGr) {
  for (auto const modifiers : {platform::ModifierFlags{}, platform::kOptionFlag}) {
    auto const grabs = keymap_->grabs({{"A"}, modifiers}, 0);
    EXPECT_FALSE(grabs.empty());
    for (auto const& grab : grabs) EXPECT_EQ(grab.modifiers & kThirdLevelState, 0);
  }
}

TEST_F(KeymapTest, AShiftedCharacterIsFoundUnderShiftOnly) {
  EXPECT_FALSE(keymap_->grabs({{"!"}, platform::kShiftFlag}, 0).empty());
  EXPECT_TRUE(keymap_->grabs({{"!"}, {}}, 0).empty());
  EXPECT_TRUE(keymap_->grabs({{"F5"}, {}}, 0).empty()) << "the name of a key is nothing that it types";
}

}  // namespace
}  // namespace morla::linux
