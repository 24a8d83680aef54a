#include "mirror/FloatingButton.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "mirror/FloatingButtonState.h"
#include "platform/NotificationNames.h"
#include "platform/fake/FakePlatform.h"

namespace morla::mirror {
namespace {

struct World {
  fake::FakeUserDefaults defaults;
  NotificationCenter notifications;
  FloatingButtonState state{defaults, notifications};
  int windowModeChanges = 0;
  int checkModeChanges = 0;
  Subscription window =
      notifications.addObserver(notifications::kWindowModeChanged, [this](auto const&) { ++windowModeChanges; });
  Subscription check =
      notifications.addObserver(notifications::kCheckModeChanged, [this](auto const&) { ++checkModeChanges; });
};

TEST(FloatingButtonState, FirstStartWritesBothKeys) {
  World world;
  world.state.initializeDefaults();
  EXPECT_EQ(world.defaults.boolean("windowModeEnabled"), true);
  EXPECT_EQ(world.defaults.boolean("checkModeEnabled"), false);
}

TEST(FloatingButtonState, LaterStartsOverwriteNothing) {
  World world;
  world.defaults.values = {{"windowModeEnabled", false}, {"checkModeEnabled", true}};
  world.state.initializeDefaults();
  EXPECT_TRUE(world.defaults.writes.empty());
  EXPECT_FALSE(world.state.windowModeEnabled());
  EXPECT_TRUE(world.state.checkModeEnabled());
}

TEST(FloatingButtonState, AValueOfAnotherTypeIsNotOverwrittenAndCountsAsOff) {
  World world;
  world.defaults.values = {{"windowModeEnabled", std::string("yes")}};
  world.state.initializeDefaults();
  EXPECT_EQ(world.defaults.text("windowModeEnabled"), "yes");
  EXPECT_FALSE(world.state.windowModeEnabled());
}

TEST(FloatingButtonState, TogglingWithoutAMenuItemChangesTheSettingAndPosts) {
  World world;
  world.state.initializeDefaults();
  world.state.toggleWindowMode();
  EXPECT_FALSE(world.state.windowModeEnabled());
  EXPECT_EQ(world.windowModeChanges, 1);
  world.state.toggleCheckMode();
  EXPECT_TRUE(world.state.checkModeEnabled());
  EXPECT_EQ(world.checkModeChanges, 1);
}

TEST(FloatingButtonState, EveryWritePostsAlsoOfAnEqualValue) {
  World world;
  world.state.setWindowModeEnabled(true);
  world.state.setWindowModeEnabled(true);
  EXPECT_EQ(world.windowModeChanges, 2);
  world.state.setCheckModeEnabled(false);
  world.state.setCheckModeEnabled(false);
  EXPECT_EQ(world.checkModeChanges, 2);
}

TEST(FloatingButtonState, TheValueIsStoredBeforeItIsAnnounced) {
  World world;
  bool seen = false;
  auto const observer = world.notifications.addObserver(notifications::kWindowModeChanged,
                                                        [&](auto const&) { seen = world.state.windowModeEnabled(); });
  world.state.setWindowModeEnabled(true);
  EXPECT_TRUE(seen);
}

TEST(FloatingButtonState, TogglingTicksTheMenuItemsThatStillExist) {
  World world;
  world.state.initializeDefaults();
  auto item = std::make_shared<platform::MenuItem>();
  world.state.checkMenuItem = item;
  world.state.toggleCheckMode();
  EXPECT_TRUE(item->isTicked);
  world.state.toggleCheckMode();
  EXPECT_FALSE(item->isTicked);
  item.reset();
  world.state.toggleCheckMode();
  EXPECT_TRUE(world.state.checkModeEnabled());
}

TEST(FloatingButtonPanel, NeverTakesTheFocus) {
  FloatingButtonPanel const panel;
  EXPECT_FALSE(panel.canBecomeKey());
  EXPECT_FALSE(panel.canBecomeMain());
}

TEST(FloatingButtonPanel, IsAFloatingNonactivatingPanelOnEverySpaceWithoutAShadow) {
  auto const spec = FloatingButtonPanel::spec();
  EXPECT_EQ(spec.contentRect, BottomLeftRect{});
  EXPECT_EQ(spec.styleMask.bits, 0x80u);
  EXPECT_EQ(static_cast<int>(spec.level), 3);
  EXPECT_EQ(spec.collectionBehaviour.bits, 0x101u);
  EXPECT_FALSE(spec.isOpaque);
  EXPECT_FALSE(spec.hasShadow);
  EXPECT_TRUE(spec.isMovableByBackground);
  EXPECT_FALSE(spec.hidesOnDeactivate) << "it must stand while Capture One is in front";
}

}  // namespace
}  // namespace morla::mirror
