#include "shortcuts/ShortcutRecorder.h"

#include <gmock/gmock.h>

#include "platform/fake/FakePlatform.h"
#include "shortcuts/KeyNames.h"
#include "unit/shortcuts/Keys.h"

namespace morla::shortcuts {
namespace {

using platform::kCommandFlag;
using platform::kControlFlag;
using platform::kOptionFlag;
using platform::kShiftFlag;
using platform::MonitorDecision;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint16_t kF5 = 96;

class ShortcutRecorderTest : public testing::Test {
 protected:
  void setStored(char const* characters, std::int64_t modifiers) {
    fake.defaults.values["hotkeyChars"] = std::string(characters);
    fake.defaults.values["hotkeyModifiers"] = modifiers;
  }
  [[nodiscard]] std::optional<std::string> storedKeys() const { return fake.defaults.text("hotkeyChars"); }
  [[nodiscard]] std::optional<std::int64_t> storedModifiers() const { return fake.defaults.integer("hotkeyModifiers"); }

  /// Keys typed into the window that hosts the recorder, each followed by a turn of the loop.
  void type(std::initializer_list<platform::KeyEvent> events) {
    for (auto const& event : events) {
      (void)fake.keyMonitors.typeHere(event);
      fake.loop.runReady();
    }
  }

  fake::FakePlatform fake;
  NotificationCenter notifications;
  HotkeyManager hotkeys{{fake.loop, fake.eventTaps, fake.defaults, notifications}};
  ShortcutRecorderManager recorder{{fake.loop, fake.keyMonitors, fake.defaults, hotkeys}};
};

TEST_F(ShortcutRecorderTest, TakesTheChordWhenEveryKeyHasBeenReleased) {
  recorder.startRecording();
  EXPECT_TRUE(recorder.isRecording().get());
  type({down("a", kCommandFlag), down("b", kCommandFlag), up("a", kCommandFlag)});
  EXPECT_TRUE(recorder.isRecording().get());
  EXPECT_EQ(storedKeys(), std::nullopt);
  type({up("b", kCommandFlag)});
  EXPECT_FALSE(recorder.isRecording().get());
  EXPECT_EQ(storedKeys(), "A+B");
  EXPECT_EQ(storedModifiers(), kCommand);
  EXPECT_EQ(recorder.displayText(), "⌘A+B");
  EXPECT_TRUE(hotkeys.isWatching());
  EXPECT_EQ(fake.keyMonitors.localCount() + fake.keyMonitors.globalCount(), 0U);
}

TEST_F(ShortcutRecorderTest, HasFourMonitorsWhileItRecords) {
  recorder.startRecording();
  EXPECT_EQ(fake.keyMonitors.localCount(), 2U);
  EXPECT_EQ(fake.keyMonitors.globalCount(), 2U);
  recorder.startRecording();
  EXPECT_EQ(fake.keyMonitors.localCount(), 2U);
  EXPECT_EQ(fake.keyMonitors.globalCount(), 2U);
  recorder.stopRecording();
  EXPECT_EQ(fake.keyMonitors.localCount() + fake.keyMonitors.globalCount(), 0U);
}

TEST_F(ShortcutRecorderTest, KeysOfTheWindowAreConsumed) {
  recorder.startRecording();
  EXPECT_EQ(fake.keyMonitors.typeHere(down("a")), MonitorDecision::consume);
  EXPECT_EQ(fake.keyMonitors.typeHere(down("")), MonitorDecision::consume);
  EXPECT_EQ(fake.keyMonitors.typeHere(up("a")), MonitorDecision::consume);
  fake.loop.runReady();
  EXPECT_EQ(fake.keyMonitors.typeHere(down("b")), MonitorDecision::pass) << "the recording is over";
}

TEST_F(ShortcutRecorderTest, KeysTypedElsewhereAreRecordedAsWell) {
  recorder.startRecording();
  fake.keyMonitors.typeElsewhere(down("a"));
  fake.keyMonitors.typeElsewhere(up("a"));
  fake.loop.runReady();
  EXPECT_EQ(storedKeys(), "A");
}

TEST_F(ShortcutRecorderTest, TheOldChordIsNotWatchedWhileItRecords) {
  setStored("A", kCommand);
  hotkeys.registerHotkey();
  recorder.loadFromDefaults();
  recorder.startRecording();
  EXPECT_FALSE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, AFourthKeyIsRefusedModifiersCounted) {
  recorder.startRecording();
  auto const flags = kCommandFlag | kShiftFlag;
  type({down("a", flags)});
  EXPECT_EQ(recorder.errorMessage().get(), "");
  type({down("b", flags)});
  EXPECT_EQ(recorder.errorMessage().get(), "Maximum 3 touches");
  type({up("b", flags), up("a", flags)});
  EXPECT_EQ(storedKeys(), "A");
  EXPECT_EQ(storedModifiers(), kCommand | kShift);
}

TEST_F(ShortcutRecorderTest, RefusesExactlyWhatIsMoreThanThreeKeys) {
  struct {
    std::vector<platform::ModifierFlags> modifiers;
    std::vector<std::string> keys;
    std::vector<bool> accepted;
  } const rows[] = {
      {{}, {"a", "b", "c", "d"}, {true, true, true, false}},
      {{kCommandFlag}, {"a", "b", "c"}, {true, true, false}},
      {{kCommandFlag, kControlFlag}, {"a", "b"}, {true, false}},
      {{kCommandFlag, kControlFlag, kOptionFlag}, {"a"}, {false}},
      {{kCommandFlag, kControlFlag, kOptionFlag, kShiftFlag}, {"a"}, {false}},
  };
  for (auto const& row : rows) {
    platform::ModifierFlags flags = platform::kCapsLockFlag;  // counts as nothing
    for (auto const flag : row.modifiers) flags = flags | flag;
    recorder.startRecording();
    for (std::size_t i = 0; i < row.keys.size(); ++i) {
      type({down(row.keys[i], flags)});
      EXPECT_EQ(recorder.errorMessage().get(), row.accepted[i] ? "" : "Maximum 3 touches")
          << row.modifiers.size() << " modifiers, key " << row.keys[i];
    }
  }
}

TEST_F(ShortcutRecorderTest, TheNextAcceptedKeyClearsTheMessage) {
  recorder.startRecording();
  type({down("a"), down("b"), down("c"), down("d"), up("c")});
  EXPECT_EQ(recorder.errorMessage().get(), "Maximum 3 touches");
  type({down("c")});
  EXPECT_EQ(recorder.errorMessage().get(), "");
}

TEST_F(ShortcutRecorderTest, ARefusedKeyLeavesItsModifiersBehind) {
  recorder.startRecording();
  type({down("a"), down("b"), down("c", kShiftFlag), up("a"), up("b")});
  EXPECT_EQ(storedKeys(), "A+B");
  EXPECT_EQ(storedModifiers(), kShift);
}

TEST_F(ShortcutRecorderTest, TheFirstOfTheLargestSetsIsKeptWithTheModifiersOfTheLastKeyDown) {
  recorder.startRecording();
  type({down("a", kCommandFlag), down("b", kCommandFlag), up("b", kCommandFlag), down("c"), up("a"), up("c")});
  EXPECT_EQ(storedKeys(), "A+B");
  EXPECT_EQ(storedModifiers(), 0);
}

TEST_F(ShortcutRecorderTest, EscapeAloneBringsTheStoredChordBack) {
  setStored("A+B", kCommand);
  recorder.startRecording();
  (void)fake.keyMonitors.typeHere(down("\x1B", kNone, kEscapeKey));
  EXPECT_TRUE(recorder.isRecording().get()) << "the change waits for its turn";
  fake.loop.runReady();
  EXPECT_FALSE(recorder.isRecording().get());
  EXPECT_EQ(recorder.displayText(), "⌘A+B");
  EXPECT_TRUE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, EscapeAloneWithNothingStoredEndsTheRecordingAndStoresNothing) {
  recorder.startRecording();
  type({down("\x1B", kNone, kEscapeKey)});
  EXPECT_FALSE(recorder.isRecording().get());
  EXPECT_THAT(fake.defaults.writes, IsEmpty());
  EXPECT_FALSE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, EscapeWhileAnotherKeyIsHeldBecomesPartOfTheChord) {
  recorder.startRecording();
  type({down("a"), down("\x1B", kNone, kEscapeKey), up("\x1B", kNone, kEscapeKey), up("a")});
  EXPECT_EQ(storedKeys(), "A+⎋");
}

TEST_F(ShortcutRecorderTest, DeleteAndEscapeUnderAModifierAreOrdinaryKeys) {
  struct {
    std::uint16_t keyCode;
    char const* name;
  } const rows[] = {{kDeleteKey, "⌫"}, {kForwardDeleteKey, "⌦"}, {kEscapeKey, "⎋"}};
  for (auto const& row : rows) {
    for (auto const flag : {kShiftFlag, kControlFlag, kOptionFlag, kCommandFlag}) {
      recorder.clearShortcut();
      recorder.startRecording();
      type({down("?", flag, row.keyCode), up("?", flag, row.keyCode)});
      EXPECT_THAT(recorder.currentChars().get(), ElementsAre(row.name));
    }
  }
}

TEST_F(ShortcutRecorderTest, DeleteAloneEmptiesTheDisplayButNotTheDefaults) {
  for (auto const keyCode : {kDeleteKey, kForwardDeleteKey}) {
    setStored("A+B", kCommand);
    recorder.loadFromDefaults();
    recorder.startRecording();
    type({down("\x7F", kNone, keyCode), up("\x7F", kNone, keyCode)});
    EXPECT_FALSE(recorder.isRecording().get());
    EXPECT_EQ(recorder.displayText(), "Cliquer pour définir");
    EXPECT_EQ(storedKeys(), "A+B");
    EXPECT_FALSE(hotkeys.isWatching());
    recorder.saveToDefaults();
    EXPECT_EQ(storedKeys(), "");
    EXPECT_EQ(storedModifiers(), 0);
  }
}

TEST_F(ShortcutRecorderTest, CapsLockDoesNotKeepEscapeFromCancelling) {
  recorder.startRecording();
  type({down("\x1B", platform::kCapsLockFlag, kEscapeKey)});
  EXPECT_FALSE(recorder.isRecording().get());
}

TEST_F(ShortcutRecorderTest, AKeyWithoutCharactersIsIgnored) {
  recorder.startRecording();
  type({down(""), up("")});
  EXPECT_TRUE(recorder.isRecording().get());
  EXPECT_THAT(fake.defaults.writes, IsEmpty());
}

TEST_F(ShortcutRecorderTest, ReleasesWithoutAnAcceptedKeyLeaveItRecording) {
  recorder.startRecording();
  auto const flags = kCommandFlag | kShiftFlag | kOptionFlag;
  type({up("z"), down("a", flags), up("a", flags)});
  EXPECT_TRUE(recorder.isRecording().get());
}

TEST_F(ShortcutRecorderTest, AutoRepeatsChangeNothing) {
  recorder.startRecording();
  type({down("a"), repeat("a"), repeat("a"), up("a")});
  EXPECT_EQ(storedKeys(), "A");
}

TEST_F(ShortcutRecorderTest, TwoReleasesInOneTurnTakeTheChordOnce) {
  recorder.startRecording();
  type({down("a")});
  (void)fake.keyMonitors.typeHere(up("a"));
  (void)fake.keyMonitors.typeHere(up("b"));
  fake.loop.runReady();
  EXPECT_EQ(recorder.displayText(), "A");
  EXPECT_EQ(storedKeys(), "A");
}

TEST_F(ShortcutRecorderTest, NamesOfKeysAreStoredAndShown) {
  recorder.startRecording();
  auto const flags = kOptionFlag | kControlFlag;
  type({down("\xEF\x9C\x88", flags, kF5), up("\xEF\x9C\x88", flags, kF5)});
  EXPECT_EQ(storedKeys(), "F5");
  EXPECT_EQ(recorder.displayText(), "⌥⌃F5");
  EXPECT_EQ(fake.eventTaps.send(down("\xEF\x9C\x88", flags, kF5)), platform::TapDecision::pass)
      << "a chord of a key's name never fires";
}

TEST_F(ShortcutRecorderTest, APlusIsNotStoredFaithfully) {
  recorder.startRecording();
  type({down("+"), up("+")});
  EXPECT_EQ(storedKeys(), "+");
  recorder.loadFromDefaults();
  EXPECT_THAT(recorder.currentChars().get(), ElementsAre(""));
}

TEST_F(ShortcutRecorderTest, ShowsModifiersInAFixedOrderBeforeTheSortedKeys) {
  struct {
    char const* keys;
    ModifierMask modifiers;
    char const* text;
  } const rows[] = {
      {"", 0, "Cliquer pour définir"},
      {"B+A", kCommand | kShift, "⌘⇧A+B"},
      {"F5", kControl | kOption, "⌥⌃F5"},
      {"F5", 0, "F5"},
      {"A", kCommand | kShift | kOption | kControl, "⌘⇧⌥⌃A"},
      {"", kShift, "⇧"},
  };
  for (auto const& row : rows) {
    setStored(row.keys, row.modifiers);
    recorder.loadFromDefaults();
    EXPECT_EQ(recorder.displayText(), row.text);
  }
}

TEST_F(ShortcutRecorderTest, StoppingWhileNothingIsRecordedStoresTheChordThatIsThere) {
  setStored("A", kCommand);
  recorder.loadFromDefaults();
  setStored("B", 0);
  recorder.stopRecording();
  EXPECT_EQ(storedKeys(), "A");
  EXPECT_EQ(storedModifiers(), kCommand);
  EXPECT_TRUE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, StoppingWithoutAChordStoresNothingAndWatchesNothing) {
  recorder.startRecording();
  recorder.stopRecording();
  EXPECT_THAT(fake.defaults.writes, IsEmpty());
  EXPECT_FALSE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, SavingAnEmptyChordStoresEmptyTextAndEndsTheWatch) {
  setStored("A", kCommand);
  hotkeys.registerHotkey();
  recorder.saveToDefaults();
  EXPECT_EQ(storedKeys(), "");
  EXPECT_EQ(storedModifiers(), 0);
  EXPECT_FALSE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, SavingAChordWatchesForIt) {
  setStored("A", kCommand);
  recorder.loadFromDefaults();
  recorder.saveToDefaults();
  EXPECT_TRUE(hotkeys.isWatching());
}

TEST_F(ShortcutRecorderTest, NothingIsRecordedAfterTheEndOfTheRecording) {
  recorder.startRecording();
  recorder.stopRecording();
  type({down("a"), up("a")});
  EXPECT_THAT(recorder.currentChars().get(), IsEmpty());
}

TEST_F(ShortcutRecorderTest, WhatIsDueAfterItsEndDoesNothing) {
  auto other = std::make_unique<ShortcutRecorderManager>(
      ShortcutRecorder::Roles{fake.loop, fake.keyMonitors, fake.defaults, hotkeys});
  other->startRecording();
  (void)fake.keyMonitors.typeHere(down("a"));
  (void)fake.keyMonitors.typeHere(up("a"));
  other.reset();
  fake.loop.runReady();
  EXPECT_THAT(fake.defaults.writes, IsEmpty());
  EXPECT_EQ(fake.keyMonitors.localCount() + fake.keyMonitors.globalCount(), 0U);
}

TEST(SharedRecorders, EachStoresItsChordAndDrivesItsManager) {
  fake::FakePlatform fake;
  platform::Environment environment(fake.platform());
  struct {
    ShortcutRecorder& recorder;
    ChordHotkeyManager& manager;
    char const* charactersKey;
    char const* modifiersKey;
  } const rows[] = {
      {ShortcutRecorderManager::shared(), HotkeyManager::shared(), "hotkeyChars", "hotkeyModifiers"},
      {AirdropShortcutRecorderManager::shared(), AirdropHotkeyManager::shared(), "airdropHotkeyChars",
       "airdropHotkeyModifiers"},
      {CaptureOneFolderShortcutRecorderManager::shared(), CaptureOneFolderHotkeyManager::shared(),
       "captureOneFolderHotkeyChars", "captureOneFolderHotkeyModifiers"},
  };
  for (auto const& row : rows) {
    row.recorder.startRecording();
    (void)fake.keyMonitors.typeHere(down("a", kControlFlag));
    (void)fake.keyMonitors.typeHere(up("a", kControlFlag));
    fake.loop.runReady();
    EXPECT_EQ(fake.defaults.text(row.charactersKey), "A");
    EXPECT_EQ(fake.defaults.integer(row.modifiersKey), kControl);
    EXPECT_TRUE(row.manager.isWatching());
  }
  EXPECT_EQ(fake.eventTaps.count(), 3U);
}

}  // namespace
}  // namespace morla::shortcuts
