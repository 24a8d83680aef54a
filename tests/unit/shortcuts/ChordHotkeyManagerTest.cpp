#include "shortcuts/ChordHotkeyManager.h"

#include <gmock/gmock.h>

#include "platform/NotificationNames.h"
#include "platform/fake/FakePlatform.h"
#include "unit/shortcuts/Keys.h"

namespace morla::shortcuts {
namespace {

using platform::kCommandFlag;
using platform::kShiftFlag;
using platform::TapDecision;
using testing::ElementsAre;
using testing::IsEmpty;

class ChordHotkeyManagerTest : public testing::Test {
 protected:
  ChordHotkeyManagerTest() {
    for (auto const name : {notifications::kHotkeyPressed, notifications::kAirdropHotkeyPressed,
                            notifications::kCaptureOneFolderHotkeyPressed}) {
      observations_.push_back(notifications_.addObserver(
          name, [this](Notification const& notification) { posted.emplace_back(notification.name.text()); }));
    }
  }

  ChordHotkeyManager::Roles roles() { return {fake.loop, fake.eventTaps, fake.defaults, notifications_}; }
  void setChord(char const* characters, std::int64_t modifiers) {
    fake.defaults.values["hotkeyChars"] = std::string(characters);
    fake.defaults.values["hotkeyModifiers"] = modifiers;
  }

  fake::FakePlatform fake;
  std::vector<std::string> posted;

 private:
  NotificationCenter notifications_;
  std::vector<Subscription> observations_;
};

TEST_F(ChordHotkeyManagerTest, PostsOnALaterTurnOfTheLoop) {
  setChord("A+B", kCommand);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  EXPECT_EQ(fake.eventTaps.send(down("a", kCommandFlag)), TapDecision::swallow);
  EXPECT_EQ(fake.eventTaps.send(down("b", kCommandFlag)), TapDecision::swallow);
  EXPECT_THAT(posted, IsEmpty());
  fake.loop.runReady();
  EXPECT_THAT(posted, ElementsAre("hotkeyPressed"));
}

TEST_F(ChordHotkeyManagerTest, EachPostsItsOwnNotificationForItsOwnChord) {
  fake.defaults.values = {{"hotkeyChars", std::string("A")},
                          {"airdropHotkeyChars", std::string("B")},
                          {"airdropHotkeyModifiers", std::int64_t{kShift}},
                          {"captureOneFolderHotkeyChars", std::string("C")},
                          {"captureOneFolderHotkeyModifiers", std::int64_t{kCommand}}};
  HotkeyManager mirror(roles());
  AirdropHotkeyManager airdrop(roles());
  CaptureOneFolderHotkeyManager folder(roles());
  for (auto* manager : std::initializer_list<ChordHotkeyManager*>{&mirror, &airdrop, &folder}) {
    manager->registerHotkey();
  }
  (void)fake.eventTaps.send(down("c", kCommandFlag));
  (void)fake.eventTaps.send(down("b", kShiftFlag));
  (void)fake.eventTaps.send(down("a"));
  fake.loop.runReady();
  EXPECT_THAT(posted, ElementsAre("captureOneFolderHotkeyPressed", "airdropHotkeyPressed", "hotkeyPressed"));
}

TEST_F(ChordHotkeyManagerTest, WithAnEmptyChordNothingIsInstalledAndNothingIsSaid) {
  setChord("", kCommand);
  HotkeyManager manager(roles());
  testing::internal::CaptureStdout();
  manager.registerHotkey();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_THAT(fake.journal.entries(), IsEmpty());
  EXPECT_FALSE(manager.isWatching());
  EXPECT_EQ(manager.matcher().savedModifiers(), kCommand) << "the modifiers are stored before the characters count";
}

TEST_F(ChordHotkeyManagerTest, WithNothingStoredNothingIsInstalled) {
  HotkeyManager manager(roles());
  manager.registerHotkey();
  EXPECT_THAT(fake.journal.entries(), IsEmpty());
  EXPECT_EQ(manager.matcher().savedModifiers(), 0);
}

TEST_F(ChordHotkeyManagerTest, TheStoredCharactersAreUpperCased) {
  setChord("a+é", 0);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  EXPECT_THAT(manager.matcher().savedChars(), ElementsAre("A", "É"));
  EXPECT_THAT(fake.eventTaps.lastWanted().characters, ElementsAre("A", "É"));
}

TEST_F(ChordHotkeyManagerTest, TellsTheSystemWhichKeysAreWanted) {
  setChord("A+B", kCommand | kShift);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  EXPECT_THAT(fake.eventTaps.lastWanted().characters, ElementsAre("A", "B"));
  EXPECT_EQ(fake.eventTaps.lastWanted().modifiers, kCommandFlag | kShiftFlag);
}

TEST_F(ChordHotkeyManagerTest, RegisteringAgainTakesTheOldTapAwayFirst) {
  setChord("A", 0);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  (void)fake.eventTaps.send(down("a"));
  setChord("B", 0);
  manager.registerHotkey();
  EXPECT_THAT(fake.journal.entries(), ElementsAre("eventTaps.makeTap", "eventTaps.remove", "eventTaps.makeTap"));
  EXPECT_THAT(manager.matcher().pressedChars(), IsEmpty());
  EXPECT_EQ(fake.eventTaps.send(down("a")), TapDecision::pass);
  EXPECT_EQ(fake.eventTaps.send(down("b")), TapDecision::swallow);
}

TEST_F(ChordHotkeyManagerTest, UnregisteringKeepsTheChordAndForgetsWhatIsPressed) {
  setChord("A+B", kCommand);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  (void)fake.eventTaps.send(down("a", kCommandFlag));
  manager.unregisterHotkey();
  EXPECT_EQ(fake.eventTaps.count(), 0U);
  EXPECT_THAT(manager.matcher().savedChars(), ElementsAre("A", "B"));
  EXPECT_EQ(manager.matcher().savedModifiers(), kCommand);
  EXPECT_THAT(manager.matcher().pressedChars(), IsEmpty());
}

TEST_F(ChordHotkeyManagerTest, AChordThatBecameEmptyIsNotWatchedAnyMore) {
  setChord("A", 0);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  setChord("", 0);
  manager.registerHotkey();
  EXPECT_EQ(fake.eventTaps.count(), 0U);
}

TEST_F(ChordHotkeyManagerTest, WithoutATapEachSaysSoInItsOwnWordsAndStaysInert) {
  fake.eventTaps.isPermitted = false;
  for (auto const* key : {"hotkeyChars", "airdropHotkeyChars", "captureOneFolderHotkeyChars"}) {
    fake.defaults.values[key] = std::string("A");
  }
  HotkeyManager mirror(roles());
  AirdropHotkeyManager airdrop(roles());
  CaptureOneFolderHotkeyManager folder(roles());
  struct {
    ChordHotkeyManager& manager;
    char const* words;
  } const rows[] = {
      {mirror, "Impossible de créer l'event tap - vérifiez les permissions d'accessibilité\n"},
      {airdrop, "Impossible de créer l'event tap pour Airdrop hotkey\n"},
      {folder, "Impossible de créer l'event tap pour Capture One folder hotkey\n"},
  };
  for (auto const& row : rows) {
    testing::internal::CaptureStdout();
    row.manager.registerHotkey();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), row.words);
    EXPECT_FALSE(row.manager.isWatching());
  }
  fake.eventTaps.isPermitted = true;
  mirror.registerHotkey();
  EXPECT_TRUE(mirror.isWatching()) << "the next call tries again";
}

TEST_F(ChordHotkeyManagerTest, ATapThatTheSystemDisabledIsEnabledAgain) {
  setChord("A", 0);
  HotkeyManager manager(roles());
  manager.registerHotkey();
  fake.eventTaps.disableAll();
  EXPECT_THAT(fake.journal.entries(), ElementsAre("eventTaps.makeTap", "eventTap.enable"));
  EXPECT_EQ(fake.eventTaps.send(down("a")), TapDecision::swallow);
}

TEST_F(ChordHotkeyManagerTest, OfTwoWithTheSameChordTheOneRegisteredLastFires) {
  setChord("A", 0);
  fake.defaults.values["airdropHotkeyChars"] = std::string("A");
  HotkeyManager mirror(roles());
  AirdropHotkeyManager airdrop(roles());
  mirror.registerHotkey();
  airdrop.registerHotkey();
  (void)fake.eventTaps.send(down("a"));
  fake.loop.runReady();
  EXPECT_THAT(posted, ElementsAre("airdropHotkeyPressed"));
}

TEST_F(ChordHotkeyManagerTest, NothingIsPostedAfterItsEnd) {
  setChord("A", 0);
  auto manager = std::make_unique<HotkeyManager>(roles());
  manager->registerHotkey();
  (void)fake.eventTaps.send(down("a"));
  manager.reset();
  fake.loop.runReady();
  EXPECT_THAT(posted, IsEmpty());
}

TEST(SharedHotkeyManagers, AreMadeOnceForAnEnvironment) {
  fake::FakePlatform fake;
  platform::Environment environment(fake.platform());
  EXPECT_EQ(&HotkeyManager::shared(), &HotkeyManager::shared());
  fake.defaults.values["airdropHotkeyChars"] = std::string("A");
  AirdropHotkeyManager::shared().registerHotkey();
  EXPECT_TRUE(AirdropHotkeyManager::shared().isWatching());
  EXPECT_FALSE(CaptureOneFolderHotkeyManager::shared().isWatching());
}

}  // namespace
}  // namespace morla::shortcuts
