#include "camerawatch/AlerteWindow.h"

#include <gtest/gtest.h>

#include "SettingsWindowWorld.h"
#include "platform/Environment.h"

namespace morla::camerawatch {
namespace {

using Strings = std::vector<std::string>;

TEST(SettingsWindow, IsAFloatingPanelWithAnInvisibleTitleBarOnEverySpace) {
  SettingsWindowWorld world;
  auto const& spec = world.open().spec();
  EXPECT_EQ(spec.styleMask.bits, 32899u);
  EXPECT_EQ(static_cast<int>(spec.level), 3);
  EXPECT_EQ(spec.collectionBehaviour.bits, 257u);
  EXPECT_TRUE(spec.hasTransparentTitleBar);
  EXPECT_TRUE(spec.isMovableByBackground);
  EXPECT_FALSE(spec.hidesOnDeactivate);
}

TEST(SettingsWindow, OpensInTheMiddleAsLargeAsItsContentNeeds) {
  SettingsWindowWorld world;
  auto& panel = world.open();
  EXPECT_TRUE(panel.isVisible());
  auto const size = world.fake.panels.fittingSize(*panel.content());
  EXPECT_EQ(panel.frame(), (BottomLeftRect{{(1920 - size.width) / 2, (1080 - size.height) / 2}, size}));
  EXPECT_EQ(panel.spec().contentRect, (BottomLeftRect{{0, 0}, size}));
  EXPECT_EQ(panel.content()->padding.top, view::kTitleBarHeight) << "the close button stands there";
}

TEST(SettingsWindow, CanGetTheKeyboardButIsNoMainWindow) {
  SettingsWindowWorld world;
  auto const& behaviour = world.open().behaviour();
  EXPECT_TRUE(behaviour.canBecomeKey());
  EXPECT_FALSE(behaviour.canBecomeMain());
}

TEST(SettingsWindow, ShownTwiceIsOneWindowBroughtForward) {
  SettingsWindowWorld world;
  auto& panel = world.open();
  world.fake.journal.clear();
  world.controller->showSettings();
  EXPECT_EQ(world.fake.journal.entries(), Strings{"AlertePanel.orderFrontRegardless"});
  EXPECT_EQ(&world.window(), &panel);
  EXPECT_EQ(world.controller->window(), &panel);
}

TEST(SettingsWindow, IsMadeAnewOnceItWasClosed) {
  SettingsWindowWorld world;
  auto& panel = world.open();
  panel.dragTo({1, 1});
  panel.close();
  EXPECT_FALSE(panel.isVisible());
  world.fake.journal.clear();
  world.controller->showSettings();
  EXPECT_EQ(world.fake.journal.entries().front(), "panels.makePanel AlertePanel");
  EXPECT_EQ(world.fake.panels.panels.size(), 1u) << "the closed one is kept";
  EXPECT_TRUE(world.window().isVisible());
  EXPECT_NE(world.window().frame().origin, (BottomLeftPoint{1, 1}));
}

TEST(SettingsWindow, ClosingItChangesNothingButTheDrawing) {
  SettingsWindowWorld world(true);
  auto& panel = world.openReady();
  panel.close();
  EXPECT_EQ(world.controller->window(), &panel);
  auto const changes = panel.contentChanges();
  world.statusReply = "JPEG||100||f/8||1/125";
  world.fake.loop.advance(3s);
  EXPECT_EQ(world.alertsShowing(), 1) << "the watch goes on";
  EXPECT_EQ(panel.contentChanges(), changes);
}

TEST(SettingsWindow, AClickLetsTheControlsReactAndThenCaptureOneComesToTheFront) {
  SettingsWindowWorld world;
  auto& panel = world.openReady();
  world.fake.workspace.userActivates(platform::RunningApplication{8, "Notes", "com.example.notes"});
  panel.turn("ISO");
  EXPECT_TRUE(world.monitor->isoAlertEnabled().get());
  EXPECT_TRUE(world.fake.workspace.activated.empty()) << "within the event";
  world.fake.loop.runReady();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), captureOne());
}

TEST(SettingsWindow, OnlyTheReleaseOfTheLeftButtonHandsTheFocusBack) {
  using view::PanelEvent;
  for (auto const event : {PanelEvent::leftMouseDown, PanelEvent::leftMouseUp, PanelEvent::rightMouseDown,
                           PanelEvent::rightMouseUp, PanelEvent::otherMouseDown, PanelEvent::otherMouseUp}) {
    SettingsWindowWorld world;
    auto& panel = world.open();
    bool wasPassedOn = false;
    auto& behaviour = const_cast<view::PanelBehaviour&>(panel.behaviour());
    behaviour.sendEvent(event, [&] {
      wasPassedOn = true;
      world.fake.loop.runReady();
      EXPECT_TRUE(world.fake.workspace.activated.empty()) << "before the controls had the event";
    });
    EXPECT_TRUE(wasPassedOn);
    world.fake.loop.runReady();
    EXPECT_EQ(world.fake.workspace.activated.size(), event == PanelEvent::leftMouseUp ? 1u : 0u);
  }
}

TEST(SettingsWindow, AClickActivatesNothingWhenCaptureOneDoesNotRun) {
  SettingsWindowWorld world;
  auto& panel = world.open();
  world.fake.workspace.running.clear();
  panel.send(view::PanelEvent::leftMouseUp);
  world.fake.loop.runReady();
  EXPECT_TRUE(world.fake.workspace.activated.empty());
}

TEST(SettingsWindow, FollowsTheHeightOfItsContentUnderAFixedTopEdgeAndMiddle) {
  SettingsWindowWorld world;
  auto& panel = world.open();
  panel.dragTo({200, 300});
  auto const before = panel.frame();
  world.fake.scripts.answersText("OK");
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  auto const after = panel.frame();
  EXPECT_EQ(after.size, world.fake.panels.fittingSize(*panel.content()));
  EXPECT_GT(after.size.height, before.size.height);
  EXPECT_EQ(after.origin.y + after.size.height, before.origin.y + before.size.height);
  EXPECT_EQ(after.origin.x + after.size.width / 2, before.origin.x + before.size.width / 2);
}

TEST(SettingsWindow, ARoundThatChangesNothingTouchesNoWidget) {
  SettingsWindowWorld world(true);
  world.fake.defaults.values["isoAlertEnabled"] = true;
  world.fake.defaults.values["isoExpectedValue"] = std::string("200");
  auto& panel = world.openReady("JPEG||800||f/8||1/125||100|200||f/8||1/125||Camera A");
  ASSERT_EQ(world.alertsShowing(), 2);
  world.fake.loop.advance(1s);
  auto const settings = panel.contentChanges();
  auto const format = world.fake.panels.panel("formatAlert").contentChanges();
  auto const iso = world.fake.panels.panel("isoAlert").contentChanges();
  auto const measurements = world.fake.panels.measurements;
  auto const rounds = world.statusScripts();
  world.fake.loop.advance(60s);
  EXPECT_EQ(world.statusScripts(), rounds + 60);
  EXPECT_EQ(panel.contentChanges(), settings);
  EXPECT_EQ(world.fake.panels.panel("formatAlert").contentChanges(), format);
  EXPECT_EQ(world.fake.panels.panel("isoAlert").contentChanges(), iso);
  EXPECT_EQ(world.fake.panels.measurements, measurements);
}

TEST(SettingsWindow, ARoundThatChangesManyValuesIsOneRedraw) {
  SettingsWindowWorld world(true);
  auto& panel = world.openReady();
  auto const before = panel.contentChanges();
  world.statusReply = "JPEG||50||f/2||1/30||50|51||f/2||1/30||Camera B";
  world.fake.loop.advance(1s);
  EXPECT_EQ(panel.contentChanges(), before + 1);
  EXPECT_TRUE(world.shows("Camera B"));
}

TEST(SettingsWindow, ThousandsOfRoundsLeaveNothingBehind) {
  SettingsWindowWorld world(true);
  world.openReady();
  auto const timers = world.fake.loop.pendingTimers();
  auto const panels = world.fake.panels.panels.size();
  for (int i = 0; i < 10'000; ++i) {
    world.statusReply = (i % 2 == 0 ? "RAW||" : "JPEG||") + std::to_string(i) + "||f/8||1/125";
    world.fake.loop.advance(1s);
  }
  EXPECT_EQ(world.fake.loop.pendingTimers(), timers);
  EXPECT_EQ(world.fake.panels.panels.size(), panels + 1) << "the format's alert";
}

TEST(SettingsWindow, IsSharedWithinAnEnvironment) {
  fake::FakePlatform fake;
  platform::Environment environment(fake.platform());
  auto& controller = AlerteWindowController::shared();
  EXPECT_EQ(controller.window(), nullptr);
  controller.showSettings();
  EXPECT_EQ(&AlerteWindowController::shared(), &controller);
  FormatMonitor::shared().showFormatAlert("JPEG");
  fake.loop.runReady();
  EXPECT_TRUE(fake.panels.panel("AlertePanel").isVisible());
  EXPECT_TRUE(fake.panels.panel("formatAlert").isVisible());
}

}  // namespace
}  // namespace morla::camerawatch
