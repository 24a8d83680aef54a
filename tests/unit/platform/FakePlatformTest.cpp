#include "platform/fake/FakePlatform.h"

#include <gtest/gtest.h>

namespace morla::fake {
namespace {

TEST(FakeWorkspace, TellsOfAnActivationOnlyWhenTheApplicationDiffers) {
  FakePlatform platform;
  int told = 0;
  auto const subscription = platform.workspace.onActivated([&told] { ++told; });
  platform.workspace.userActivates(platform::RunningApplication{7, "Notes", "com.example.notes"});
  platform.workspace.userActivates(platform::RunningApplication{7, "Notes", "com.example.notes"});
  EXPECT_EQ(told, 1);
  platform.workspace.activateSelf();
  EXPECT_EQ(told, 2);
  EXPECT_EQ(platform.workspace.frontmostApplication(), FakePlatform::self());
}

TEST(FakeWorkspace, ActivatingAnApplicationThatHasEndedChangesNothing) {
  FakePlatform platform;
  platform.workspace.activate(platform::RunningApplication{7, "Notes", "com.example.notes"});
  EXPECT_EQ(platform.workspace.frontmostApplication(), std::nullopt);
}

TEST(FakePanel, TellsOfManyMovesInOneTurnOnce) {
  FakePlatform platform;
  struct Behaviour : view::PanelBehaviour {
    bool canBecomeKey() const override { return false; }
    bool canBecomeMain() const override { return false; }
  } behaviour;
  auto const panel = platform.panels.makePanel({}, behaviour);
  int moves = 0;
  auto const subscription = panel->onDidMove([&moves] { ++moves; });
  panel->setFrameOrigin({1, 1});
  panel->setFrameOrigin({2, 2});
  platform.loop.runReady();
  EXPECT_EQ(moves, 1);
  panel->setFrameOrigin({2, 2});
  platform.loop.runReady();
  EXPECT_EQ(moves, 1);
}

TEST(FakeEventMonitors, ConsumedEventsReachNoFurtherMonitor) {
  FakePlatform platform;
  int seen = 0;
  auto const first = platform.eventMonitors.addLocalMonitor(
      platform::kLeftMouseDown, [](auto const&) { return platform::MonitorDecision::consume; });
  auto const second =
      platform.eventMonitors.addLocalMonitor(platform::kLeftMouseDown | platform::kLeftMouseUp, [&seen](auto const&) {
        ++seen;
        return platform::MonitorDecision::pass;
      });
  EXPECT_EQ(platform.eventMonitors.send({platform::MouseEventKind::leftDown, nullptr, {}}),
            platform::MonitorDecision::consume);
  EXPECT_EQ(seen, 0);
  EXPECT_EQ(platform.eventMonitors.send({platform::MouseEventKind::leftUp, nullptr, {}}),
            platform::MonitorDecision::pass);
  EXPECT_EQ(seen, 1);
}

TEST(FakeScriptRunnerDeathTest, ScriptWithoutAPreparedReplyEndsTheTest) {
  FakePlatform platform;
  EXPECT_DEATH((void)platform.scripts.execute("return 1"), "did not set up");
}

}  // namespace
}  // namespace morla::fake
