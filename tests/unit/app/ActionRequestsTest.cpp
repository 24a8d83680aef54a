#include "app/ActionRequests.h"

#include <gtest/gtest.h>

#include "AppWorld.h"

namespace morla::app {
namespace {

using platform::ActionOutcome;

TEST(ActionRequests, WindowsOpenEachByItsName) {
  struct Row {
    std::string_view action;
    std::string expected;
  };
  for (auto const& [action, expected] : {
           Row{"openSettings", "settings.showSettings"},
           Row{"openMenuSettings", "menuSettings.showSettings"},
           Row{"openAirdropSettings", "airdropSettings.showSettings"},
           Row{"checkForUpdates", "update.checkForUpdates"},
       }) {
    AppWorld world;
    world.start();
    EXPECT_EQ(world.fake.application.request(action), ActionOutcome::done) << action;
    world.turn();
    EXPECT_EQ(world.fake.journal.entries(), std::vector<std::string>{expected}) << action;
  }
}

TEST(ActionRequests, TheShortcutSettingsOpenAtOnceTheOthersOnALaterTurn) {
  AppWorld world;
  world.start();
  AppMenuActions::shared().openSettings();
  EXPECT_EQ(world.fake.journal.entries(), std::vector<std::string>{"settings.showSettings"});
  world.fake.journal.clear();
  AppMenuActions::shared().openMenuSettings();
  EXPECT_TRUE(world.fake.journal.entries().empty());
  world.turn();
  EXPECT_EQ(world.fake.journal.entries(), std::vector<std::string>{"menuSettings.showSettings"});
}

TEST(ActionRequests, TheAlertSettingsOpenOnALaterTurn) {
  AppWorld world;
  world.start();
  EXPECT_EQ(world.fake.application.request("openAlerte"), ActionOutcome::done);
  EXPECT_EQ(world.fake.panels.find("AlertePanel"), nullptr);
  world.turn();
  EXPECT_TRUE(world.fake.panels.panel("AlertePanel").isVisible());
}

TEST(ActionRequests, AWindowThatTheProgramDoesNotHaveIsUnavailable) {
  AppWorld world(WithFeatures::no);
  world.start();
  for (auto const action : {"openSettings", "openMenuSettings", "openAirdropSettings", "checkForUpdates"}) {
    EXPECT_EQ(world.fake.application.request(action), ActionOutcome::unavailable) << action;
  }
}

TEST(ActionRequests, ModesToggleAndQuitTerminates) {
  AppWorld world;
  world.start();
  EXPECT_EQ(world.fake.application.request("toggleWindowMode"), ActionOutcome::done);
  EXPECT_EQ(world.fake.defaults.boolean("windowModeEnabled"), false);
  EXPECT_EQ(world.fake.application.request("toggleCheckMode"), ActionOutcome::done);
  EXPECT_EQ(world.fake.defaults.boolean("checkModeEnabled"), true);
  EXPECT_EQ(world.fake.application.request("quit"), ActionOutcome::done);
  EXPECT_TRUE(world.fake.application.isTerminated);
}

TEST(ActionRequests, ThePrivacySettingsOpenAtTheirAddress) {
  AppWorld world;
  world.start();
  EXPECT_EQ(world.fake.application.request("openAutomationSettings"), ActionOutcome::done);
  EXPECT_EQ(world.fake.workspace.openedUrls,
            std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"});
}

TEST(ActionRequests, AnUnknownNameChangesNothing) {
  AppWorld world;
  world.start();
  EXPECT_EQ(world.fake.application.request("openDoors"), ActionOutcome::unknown);
  EXPECT_EQ(world.fake.application.request(""), ActionOutcome::unknown);
  world.turn();
  EXPECT_TRUE(world.fake.journal.entries().empty());
}

}  // namespace
}  // namespace morla::app
