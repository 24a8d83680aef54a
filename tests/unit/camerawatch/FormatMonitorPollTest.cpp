#include <gtest/gtest.h>

#include "CameraWatchWorld.h"

namespace morla::camerawatch {
namespace {

/// A started and ready watch whose status scripts answer from now on with a whole reading.
struct PollingWorld : CameraWatchWorld {
  PollingWorld() : CameraWatchWorld(true) {
    start();
    fake.scripts.answers([](std::string const& source) {
      return platform::ScriptReply{source.find("count of documents") == std::string::npos ? "OK" : kFullReply,
                                   std::nullopt};
    });
    detach(monitor->checkAndStartIfNeeded());
    fake.loop.advance(0s);
  }
};

TEST(Poll, RunsOnceASecondWhileTheWatchIsOn) {
  PollingWorld world;
  EXPECT_EQ(world.statusScripts(), 1);
  world.fake.loop.advance(999ms);
  EXPECT_EQ(world.statusScripts(), 1);
  world.fake.loop.advance(1ms);
  EXPECT_EQ(world.statusScripts(), 2);
  world.fake.loop.advance(8s);
  EXPECT_EQ(world.statusScripts(), 10);
}

TEST(Poll, DoesNotStartWhileTheWatchIsOff) {
  CameraWatchWorld world;
  auto& monitor = world.startReady();
  ASSERT_EQ(monitor.permissionState().get(), PermissionState::ready);
  monitor.startMonitoring();
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.statusScripts(), 0);
  EXPECT_EQ(world.fake.loop.pendingTimers(), 0u) << "nothing may wake the program while the watch is off";
}

TEST(Poll, SwitchedOnBeforeThePermissionStartsWhenALaterCheckSucceeds) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.fake.scripts.answersError(-1712);
  detach(monitor.checkPermissionState());
  world.fake.loop.advance(0s);
  monitor.setIsEnabled(true);
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.statusScripts(), 0);
  world.fake.scripts.answersText("OK");
  detach(monitor.checkPermissionState());
  world.fake.loop.advance(0s);
  EXPECT_EQ(world.statusScripts(), 1);
}

TEST(Poll, NextRoundStartsOneSecondAfterThePreviousOneFinished) {
  PollingWorld world;
  world.fake.background.takes(300ms);
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.fake.background.startedJobs(), 3);  // the probe, the first round, this one
  world.fake.loop.advance(300ms + 999ms);
  EXPECT_EQ(world.fake.background.startedJobs(), 3);
  world.fake.loop.advance(1ms);
  EXPECT_EQ(world.fake.background.startedJobs(), 4);
}

TEST(Poll, ASlowScriptStretchesThePeriodAndRoundsNeverOverlap) {
  PollingWorld world;
  world.fake.background.takes(4s);
  world.fake.loop.advance(1s);  // the slow round begins
  auto const started = world.fake.background.startedJobs();
  world.fake.loop.advance(4s);
  EXPECT_EQ(world.fake.background.startedJobs(), started);
  EXPECT_EQ(world.fake.background.finishedJobs(), started);
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.fake.background.startedJobs(), started + 1);
}

TEST(Poll, SwitchingOffEndsTheSleepAtOnceAndDismissesTheAlerts) {
  PollingWorld world;
  world.fake.loop.advance(500ms);
  ASSERT_EQ(world.fake.loop.pendingTimers(), 1u);
  world.raiseAlert();
  world.monitor->setIsEnabled(false);
  EXPECT_EQ(world.alertsShowing(), 0);
  world.fake.loop.runReady();
  EXPECT_EQ(world.fake.loop.pendingTimers(), 0u);
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(10s);
  EXPECT_EQ(world.statusScripts(), rounds);
}

TEST(Poll, ARoundInFlightWhenTheWatchIsSwitchedOffStillAppliesItsReply) {
  PollingWorld world;
  world.fake.background.takes(2s);
  world.fake.loop.advance(1s);  // a round begins
  world.monitor->setIsEnabled(false);
  world.fake.scripts.answersText("JPEG||800||f/2.8||1/250");
  world.fake.loop.advance(2s);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "JPEG");
  EXPECT_EQ(world.monitor->lastDetectedISO().get(), "800");
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(10s);
  EXPECT_EQ(world.statusScripts(), rounds);
}

TEST(Poll, AfterARestartTheOldRoundAppliesItsReplyAndRunsNoFurtherOne) {
  PollingWorld world;
  world.fake.background.takes(5s);
  world.fake.loop.advance(1s);  // the old task's round begins, to end at 6 s
  auto const started = world.fake.background.startedJobs();
  world.fake.background.takes(100ms);
  world.monitor->startMonitoring();
  world.fake.scripts.answersText("TIFF||100||f/4||1/60");
  world.fake.loop.advance(100ms);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "TIFF");
  EXPECT_EQ(world.fake.background.startedJobs(), started + 1);

  world.fake.loop.advance(4s + 800ms);  // to 5.9 s: the new task's rounds alone
  auto const beforeOldEnds = world.fake.background.startedJobs();
  world.fake.scripts.answersText("JPEG||800||f/2.8||1/250");
  world.fake.loop.advance(100ms);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "JPEG") << "the old round's reply was lost";

  // From here on one round every 1.1 s: had the old task gone on, there would be twice as many.
  world.fake.loop.advance(11s);
  auto const rounds = world.fake.background.startedJobs() - beforeOldEnds;
  EXPECT_GE(rounds, 9);
  EXPECT_LE(rounds, 11);
}

TEST(Poll, RestartingTwiceInOneTurnRunsOneTaskOnly) {
  PollingWorld world;
  auto const before = world.statusScripts();
  world.monitor->startMonitoring();
  world.monitor->startMonitoring();
  world.fake.loop.advance(0s);
  EXPECT_EQ(world.statusScripts(), before + 1);
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.statusScripts(), before + 2);
}

TEST(Poll, ARefusedRoundStopsIt) {
  PollingWorld world;
  world.raiseAlert();
  world.fake.scripts.answersError(-1743);
  world.fake.loop.advance(1s);
  auto const& monitor = *world.monitor;
  EXPECT_EQ(monitor.permissionState().get(), PermissionState::permissionDenied);
  EXPECT_EQ(monitor.lastDetectedFormat().get(), std::nullopt);
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), true);
  EXPECT_EQ(world.alertsShowing(), 0);
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(60s);
  EXPECT_EQ(world.statusScripts(), rounds);
  EXPECT_EQ(world.fake.loop.pendingTimers(), 0u);
}

TEST(Poll, GoesOnAfterEveryOtherFailure) {
  PollingWorld world;
  world.fake.scripts.answersError(-1712);
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "ERROR");
  world.fake.scripts.answersText(kFullReply);
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "RAW");
}

TEST(Poll, PicksCaptureOneUpAgainWhenItReturns) {
  PollingWorld world;
  world.raiseAlert();
  world.fake.workspace.running.clear();
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "NOT_RUNNING");
  EXPECT_EQ(world.alertsShowing(), 0);
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(3s);
  EXPECT_EQ(world.statusScripts(), rounds) << "a status script would have started Capture One";
  world.fake.workspace.running = {captureOne()};
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "RAW");
}

TEST(Poll, ASilentCaptureOneHoldsItsRoundForAppleScriptsTwoMinutesAndNothingElse) {
  PollingWorld world;
  world.fake.background.takes(120s);
  world.fake.loop.advance(1s);  // the silent round begins
  world.fake.scripts.answersError(-1712);
  world.fake.background.takes(10ms);
  int otherScripts = 0;
  world.fake.background.run(QualityOfService::userInitiated, [&otherScripts] { ++otherScripts; });
  world.fake.loop.advance(10ms);
  EXPECT_EQ(otherScripts, 1);
  world.fake.loop.advance(119s + 989ms);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "RAW");
  world.fake.loop.advance(1ms);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "ERROR");
}

TEST(Poll, OverlappingPermissionCheckAndRoundEachGetTheirAnswer) {
  PollingWorld world;
  world.fake.background.takes(500ms);
  world.fake.loop.advance(1s);
  detach(world.monitor->checkPermissionState());
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::checking);
  world.fake.loop.advance(500ms);
  EXPECT_EQ(world.monitor->permissionState().get(), PermissionState::ready);
  EXPECT_EQ(world.monitor->lastDetectedFormat().get(), "RAW");
}

TEST(Poll, EndsWithItsOwner) {
  PollingWorld world;
  world.fake.background.takes(500ms);
  world.fake.loop.advance(1s + 100ms);
  world.monitor.reset();
  world.fake.loop.advance(10s);
  EXPECT_EQ(world.fake.loop.pendingTimers(), 0u);
}

TEST(Switch, IsReadFromTheDefaultsAndStoredOnEveryWrite) {
  CameraWatchWorld world(true);
  auto& monitor = world.start();
  EXPECT_TRUE(monitor.isEnabled().get());
  monitor.setIsEnabled(false);
  monitor.setIsEnabled(false);
  std::vector<platform::DefaultsEntry> const expected{{"formatMonitorEnabled", false}, {"formatMonitorEnabled", false}};
  EXPECT_EQ(world.fake.defaults.writes, expected);
}

TEST(Switch, AStoredValueOfAnotherTypeCountsAsOff) {
  CameraWatchWorld world;
  world.fake.defaults.values["formatMonitorEnabled"] = std::int64_t{1};
  EXPECT_FALSE(world.start().isEnabled().get());
}

TEST(Switch, IsStoredAfterItWasAnnounced) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  std::optional<bool> storedWhenAnnounced;
  auto const observer = monitor.isEnabled().willChange([&](bool) {
    storedWhenAnnounced = world.fake.defaults.hasValue("formatMonitorEnabled");
    EXPECT_FALSE(monitor.isEnabled().get());
  });
  monitor.setIsEnabled(true);
  EXPECT_EQ(storedWhenAnnounced, false);
}

}  // namespace
}  // namespace morla::camerawatch
