#include <gtest/gtest.h>

#include <optional>

#include "CameraWatchWorld.h"

namespace morla::camerawatch {
namespace {

Task<> requestInto(FormatMonitor& monitor, std::optional<bool>& result) {
  bool const granted = co_await monitor.requestPermission();
  result = granted;
}

void check(CameraWatchWorld& world) {
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
}

std::optional<bool> request(CameraWatchWorld& world) {
  std::optional<bool> result;
  detach(requestInto(*world.monitor, result));
  world.fake.loop.advance(0s);
  return result;
}

TEST(PermissionCheck, TheStateIsCheckingUntilTheProbeAnswers) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  EXPECT_EQ(monitor.permissionState().get(), PermissionState::checking);
  world.fake.scripts.answersText("OK");
  world.fake.background.takes(500ms);
  detach(monitor.checkPermissionState());
  world.fake.loop.advance(499ms);
  EXPECT_EQ(monitor.permissionState().get(), PermissionState::checking);
  world.fake.loop.advance(1ms);
  EXPECT_EQ(monitor.permissionState().get(), PermissionState::ready);
}

TEST(PermissionCheck, CaptureOneNeitherRunningNorInstalledIsMissingAndNothingIsSent) {
  CameraWatchWorld world;
  world.fake.workspace.running.clear();
  world.start();
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::captureOneMissing);
  EXPECT_TRUE(world.fake.scripts.sources.empty());
}

TEST(PermissionCheck, TheProbeIsSentToAnInstalledCopyThatDoesNotRun) {
  CameraWatchWorld world;
  world.fake.workspace.running.clear();
  world.fake.files.folders["/Applications"] = {"Capture One.app"};
  world.fake.workspace.bundles["/Applications/Capture One.app"] = {"installed.id", std::nullopt, "16.0"};
  world.fake.scripts.answersText("OK");
  world.start();
  check(world);
  EXPECT_EQ(world.fake.scripts.sources,
            std::vector<std::string>{"tell application id \"installed.id\"\n    return \"OK\"\nend tell"});
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::ready);
}

TEST(PermissionCheck, ARefusalIsRememberedAndStopsThePoll) {
  CameraWatchWorld world(true);
  auto& monitor = world.startReady();
  world.fake.scripts.answersText(kFullReply);
  world.fake.loop.advance(3s);
  world.raiseAlert();
  world.fake.scripts.answersError(-1743);
  check(world);
  EXPECT_EQ(monitor.permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), true);
  EXPECT_EQ(world.alertsShowing(), 0);
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(10s);
  EXPECT_EQ(world.statusScripts(), rounds);
}

TEST(PermissionCheck, ARefusalWithTheWatchOffDismissesNothing) {
  CameraWatchWorld world;
  world.start();
  world.raiseAlert();
  world.fake.scripts.answersError(-1743);
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(world.alertsShowing(), 1);
}

TEST(PermissionCheck, AnotherErrorAfterAnEarlierRefusalIsStillDeniedUntilAProbeSucceeds) {
  CameraWatchWorld world;
  world.fake.defaults.values["automationPermissionDenied"] = true;
  world.start();
  world.fake.scripts.answersError(-1712);
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
  world.fake.scripts.answersText("OK");
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::ready);
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), false);
  world.fake.scripts.answersError(-1712);
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::needsPermission);
}

TEST(PermissionCheck, EveryOutcomeWithoutTextNeedsPermissionWhenNoRefusalIsRemembered) {
  struct Row {
    std::string_view label;
    platform::ScriptReply reply;
  };
  for (auto const& [label, reply] : {
           Row{"busy", {std::nullopt, platform::ScriptError{-1712, ""}}},
           Row{"an error without number", {std::nullopt, platform::ScriptError{std::nullopt, ""}}},
           Row{"no text form", {}},
       }) {
    CameraWatchWorld world;
    world.start();
    world.fake.scripts.answers([&reply](std::string const&) { return reply; });
    check(world);
    EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::needsPermission) << label;
    EXPECT_FALSE(world.fake.defaults.hasValue("automationPermissionDenied")) << label;
  }
}

TEST(PermissionCheck, ARememberedRefusalWithTheWatchOnStopsThePollAndDismisses) {
  CameraWatchWorld world(true);
  world.startReady();
  world.fake.defaults.values["automationPermissionDenied"] = true;
  world.fake.scripts.answersNothing();
  world.raiseAlert();
  check(world);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(world.alertsShowing(), 0);
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.statusScripts(), rounds);
}

TEST(PermissionRequest, BringsThisProgramToTheFrontBeforeTheProbe) {
  CameraWatchWorld world;
  world.start();
  world.fake.scripts.answers([&world](std::string const&) {
    EXPECT_EQ(world.fake.workspace.frontmostApplication(), fake::FakePlatform::self());
    return platform::ScriptReply{"OK", std::nullopt};
  });
  EXPECT_EQ(request(world), true);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::ready);
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), false);
}

TEST(PermissionRequest, LeavesStartingThePollToItsCaller) {
  CameraWatchWorld world(true);
  world.start();
  world.fake.scripts.answersText("OK");
  EXPECT_EQ(request(world), true);
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.statusScripts(), 0);
}

TEST(PermissionRequest, ARefusalIsDeniedAndRemembered) {
  CameraWatchWorld world;
  world.start();
  world.fake.scripts.answersError(-1743);
  EXPECT_EQ(request(world), false);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), true);
}

TEST(PermissionRequest, NoAnswerLeavesTheStateAndReturnsFalse) {
  CameraWatchWorld world;
  world.fake.defaults.values["automationPermissionDenied"] = true;
  world.start();
  world.fake.scripts.answersError(-1712);
  check(world);
  ASSERT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(request(world), false);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::permissionDenied);
}

TEST(PermissionRequest, CaptureOneMissingIsSaidAndNothingIsSent) {
  CameraWatchWorld world;
  world.fake.workspace.running.clear();
  world.start();
  EXPECT_EQ(request(world), false);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::captureOneMissing);
  EXPECT_TRUE(world.fake.scripts.sources.empty());
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), std::nullopt);
}

TEST(AutomationSettings, OpensThePageAndActivatesTheSettingsApplicationAfterThreeTenthsOfASecond) {
  struct Row {
    std::vector<std::string> running;
    std::optional<std::string> activated;
  };
  for (auto const& [running, activated] : {
           Row{{"com.apple.systempreferences"}, "com.apple.systempreferences"},
           Row{{"com.apple.Preferences"}, "com.apple.Preferences"},
           Row{{"com.apple.Preferences", "com.apple.systempreferences"}, "com.apple.systempreferences"},
           Row{{}, std::nullopt},
       }) {
    CameraWatchWorld world;
    for (auto const& identifier : running) world.fake.workspace.running.push_back({99, "Réglages", identifier});
    world.start();
    world.monitor->openAutomationSettings();
    EXPECT_EQ(world.fake.workspace.openedUrls,
              std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"});
    world.fake.loop.advance(299ms);
    EXPECT_TRUE(world.fake.workspace.activated.empty());
    world.fake.loop.advance(1ms);
    if (activated) {
      ASSERT_EQ(world.fake.workspace.activated.size(), 1u);
      EXPECT_EQ(world.fake.workspace.activated[0].bundleIdentifier, activated);
    } else {
      EXPECT_TRUE(world.fake.workspace.activated.empty());
    }
  }
}

}  // namespace
}  // namespace morla::camerawatch
