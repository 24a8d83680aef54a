#include "app/MainApp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>

#include "AppWorld.h"
#include "base/Trace.h"

namespace morla::app {
namespace {

using namespace std::chrono_literals;
using platform::MouseEvent;
using platform::MouseEventKind;
using Strings = std::vector<std::string>;

view::PanelBehaviour& panelClass() {
  static mirror::FloatingButtonPanel behaviour;
  return behaviour;
}

TEST(StartUp, HappensInItsFixedOrder) {
  AppWorld world;
  world.fake.defaults.values = {{"buttonWindowX", 100.0}, {"buttonWindowY", 200.0}};
  world.fake.journal.clear();
  world.app = std::make_unique<MainApp>(world.environment);
  EXPECT_EQ(world.app->main(), 0);
  EXPECT_EQ(world.fake.journal.entries(), (Strings{
                                              "application.setActivationPolicy 1",
                                              "panels.makePanel FloatingButtonPanel",
                                              "FloatingButtonPanel.setContentSize 40x40",
                                              "FloatingButtonPanel.setContent",
                                              "menuBarPanel made",
                                              "statusBar.makeStatusItem -2",
                                              "FloatingButtonPanel.setFrameOrigin 100 200",
                                              "eventMonitors.addLocalMonitor 78",
                                              "airdropFolders.cleanup",
                                              "application.run",
                                          }));
  EXPECT_EQ(world.fake.defaults.boolean("windowModeEnabled"), true);
  EXPECT_EQ(world.fake.defaults.boolean("checkModeEnabled"), false);
}

TEST(StartUp, FeaturesStartOnTheFirstTurnAndTheCameraWatchAfterThem) {
  AppWorld world;
  world.app = std::make_unique<MainApp>(world.environment);
  world.app->main();
  world.fake.journal.clear();
  EXPECT_TRUE(world.fake.scripts.sources.empty());
  world.fake.loop.advance(0s);
  EXPECT_EQ(world.fake.journal.entries(), (Strings{
                                              "hotkeys.registerHotkey",
                                              "captureOneFolderHotkeys.registerHotkey",
                                              "airdropHotkeys.registerHotkey",
                                              "captureOneFolderScripts.startListening",
                                              "airdropScripts.startListening",
                                              "FloatingButtonPanel.orderFrontRegardless",
                                              "mirror.handleFrontAppChange capture one",
                                          }));
  EXPECT_EQ(world.fake.scripts.sources.size(), 1u) << "the probe";
}

TEST(StartUp, TheMenuBarPanelIsMadeAfterTheDefaultsItReads) {
  AppWorld world;
  FeatureHooks::shared().makeMenuBarPanel = [&world]() -> std::unique_ptr<MenuBarPanel> {
    EXPECT_TRUE(world.fake.defaults.hasValue("windowModeEnabled"));
    return nullptr;
  };
  world.start();
}

TEST(StartUp, WorksWithoutAnyFeature) {
  AppWorld world(WithFeatures::no);
  world.start();
  EXPECT_TRUE(world.button().isVisible());
  world.fake.statusBar.button.click();
  world.fake.eventMonitors.send({MouseEventKind::leftDown, &world.button(), {}});
  world.fake.eventMonitors.send({MouseEventKind::leftUp, &world.button(), {}});
  world.environment.notifications().post(notifications::kHotkeyPressed);
  world.turn();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), AppWorld::captureOne());
}

TEST(StartUp, WorksWithoutAStatusItemButton) {
  AppWorld world;
  world.fake.statusBar.givesButton = false;
  world.start();
  EXPECT_TRUE(world.button().isVisible());
}

TEST(StartUp, EndsTheTraceWithReady) {
  AppWorld world;
  Strings lines;
  Trace const trace([&lines](std::string const& line) { lines.push_back(line); },
                    [] { return std::chrono::milliseconds(7); });
  world.app = std::make_unique<MainApp>(world.environment);
  world.app->main();
  EXPECT_EQ(std::ranges::count(lines, R"({"t":7,"ready":true})"), 0);
  world.fake.loop.runReady();
  EXPECT_EQ(std::ranges::count(lines, R"({"t":7,"ready":true})"), 1);
  EXPECT_EQ(std::ranges::count(lines, R"({"t":7,"front":"Capture One","id":"com.captureone.captureone16"})"), 1);
}

TEST(StatusItem, ShowsItsImageAndTogglesTheMenuBarPanel) {
  AppWorld world;
  world.start();
  ASSERT_TRUE(world.fake.statusBar.button.image.has_value());
  EXPECT_EQ(world.fake.statusBar.button.image->size, (Size{18, 18}));
  world.fake.statusBar.button.click();
  EXPECT_EQ(world.fake.journal.entries(), Strings{"menuBarPanel.togglePanel"});
}

TEST(FloatingButtonPosition, IsRestoredOnlyWhenBothNumbersAreStored) {
  struct Row {
    std::string label;
    std::map<std::string, platform::DefaultsValue, std::less<>> stored;
    BottomLeftPoint expected;
  };
  double const infinity = std::numeric_limits<double>::infinity();
  for (auto const& [label, stored, expected] : {
           Row{"nothing", {}, {0, 0}},
           Row{"both", {{"buttonWindowX", 12.5}, {"buttonWindowY", -30.0}}, {12.5, -30}},
           Row{"whole numbers", {{"buttonWindowX", std::int64_t{12}}, {"buttonWindowY", std::int64_t{30}}}, {12, 30}},
           Row{"x alone", {{"buttonWindowX", 12.5}}, {0, 0}},
           Row{"y alone", {{"buttonWindowY", 12.5}}, {0, 0}},
           Row{"text", {{"buttonWindowX", std::string("12")}, {"buttonWindowY", 5.0}}, {0, 0}},
           Row{"not finite", {{"buttonWindowX", 5.0}, {"buttonWindowY", infinity}}, {0, 0}},
       }) {
    AppWorld world;
    world.fake.defaults.values = stored;
    world.start();
    EXPECT_EQ(world.button().frame().origin, expected) << label;
  }
}

TEST(FloatingButtonPosition, IsStoredOnEveryMove) {
  AppWorld world;
  world.start();
  world.button().setFrameOrigin({640.5, 480});
  world.turn();
  EXPECT_EQ(world.fake.defaults.number("buttonWindowX"), 640.5);
  EXPECT_EQ(world.fake.defaults.number("buttonWindowY"), 480.0);
}

void press(AppWorld& world, BottomLeftPoint from, BottomLeftPoint to) {
  world.fake.pointer.at = from;
  world.fake.eventMonitors.send({MouseEventKind::leftDown, &world.button(), {}});
  world.fake.pointer.at = to;
  world.fake.eventMonitors.send({MouseEventKind::leftDragged, &world.button(), {}});
  world.fake.eventMonitors.send({MouseEventKind::leftUp, &world.button(), {}});
}

TEST(FloatingButton, AClickTogglesTheMirrorAndGivesTheFocusToCaptureOne) {
  AppWorld world;
  world.start();
  press(world, {10, 10}, {13, 10});
  EXPECT_EQ(world.fake.journal.entries(), (Strings{"mirror.toggleWindow", "workspace.activate Capture One"}));
}

TEST(FloatingButton, AnExistingSecondaryWindowIsBroughtForwardWhenItIsWanted) {
  AppWorld world;
  world.start();
  auto const window = world.fake.panels.makePanel({}, panelClass());
  world.features.mirror.window = window.get();
  world.fake.journal.clear();
  press(world, {10, 10}, {10, 10});
  EXPECT_EQ(world.fake.journal.entries(),
            (Strings{"mirror.toggleWindow", "panel.orderFrontRegardless", "workspace.activate Capture One"}));
  world.features.mirror.toggleResult = false;
  world.fake.journal.clear();
  press(world, {10, 10}, {10, 10});
  EXPECT_EQ(world.fake.journal.entries(), (Strings{"mirror.toggleWindow", "workspace.activate Capture One"}));
}

TEST(FloatingButton, ADragDoesNotToggleButGivesTheFocusToCaptureOne) {
  AppWorld world;
  world.start();
  press(world, {10, 10}, {14, 10});
  EXPECT_EQ(world.fake.journal.entries(), Strings{"workspace.activate Capture One"});
}

TEST(FloatingButton, ARightClickShowsOnlyQuitterAndDoesNotReachThePanel) {
  AppWorld world;
  world.start();
  world.button().setFrameOrigin({300, 400});
  auto const decision = world.fake.eventMonitors.send({MouseEventKind::rightDown, &world.button(), {5, 6}});
  EXPECT_EQ(decision, platform::MonitorDecision::consume);
  ASSERT_EQ(world.fake.menus.shown.size(), 1u);
  auto const& shown = world.fake.menus.shown[0];
  EXPECT_EQ(shown.at, (BottomLeftPoint{305, 406}));
  ASSERT_EQ(shown.menu.items.size(), 1u);
  EXPECT_EQ(shown.menu.items[0]->title, "Quitter");
  EXPECT_EQ(shown.menu.items[0]->keyEquivalent, "");
  EXPECT_FALSE(world.fake.application.isTerminated);
  shown.menu.items[0]->action();
  EXPECT_TRUE(world.fake.application.isTerminated);
}

TEST(FloatingButton, EventsOfOtherWindowsPassUnchanged) {
  AppWorld world;
  world.start();
  for (auto const kind : {MouseEventKind::leftDown, MouseEventKind::leftUp, MouseEventKind::rightDown}) {
    EXPECT_EQ(world.fake.eventMonitors.send({kind, nullptr, {}}), platform::MonitorDecision::pass);
  }
  EXPECT_TRUE(world.fake.journal.entries().empty());
  EXPECT_TRUE(world.fake.menus.shown.empty());
}

TEST(FrontApplication, TheButtonIsShownForCaptureOneAndForThisProgramOnly) {
  struct Row {
    std::string label;
    std::optional<platform::RunningApplication> front;
    bool isShown;
  };
  for (auto const& [label, front, isShown] : {
           Row{"Capture One", AppWorld::captureOne(), true},
           Row{"another edition", platform::RunningApplication{12, "CAPTURE ONE Express", "x"}, true},
           Row{"this program", fake::FakePlatform::self(), true},
           Row{"another application", AppWorld::notes(), false},
           Row{"one without a name", platform::RunningApplication{12, std::nullopt, "x"}, false},
           Row{"none", std::nullopt, false},
       }) {
    AppWorld world;
    world.start();
    world.fake.workspace.running.clear();  // so that nothing takes the front back
    world.fake.workspace.userActivates(platform::RunningApplication{99, "Autre", "autre"});
    world.turn();
    world.fake.workspace.userActivates(front);
    world.turn();
    EXPECT_EQ(world.button().isVisible(), isShown) << label;
  }
}

TEST(FrontApplication, WindowModeOffHidesTheButtonWhateverIsInFront) {
  AppWorld world;
  world.fake.defaults.values["windowModeEnabled"] = false;
  world.start();
  for (auto const& front : {AppWorld::notes(), AppWorld::captureOne(), fake::FakePlatform::self()}) {
    world.fake.workspace.userActivates(front);
    world.turn();
    EXPECT_FALSE(world.button().isVisible()) << front.localizedName.value_or("");
  }
  auto const& entries = world.fake.journal.entries();
  EXPECT_TRUE(std::ranges::none_of(entries, [](auto const& entry) { return entry.starts_with("mirror."); }));
}

TEST(FrontApplication, ThisProgramHandsTheFocusStraightBackToCaptureOne) {
  AppWorld world;
  world.start();
  world.fake.workspace.activateSelf();
  world.turn();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), AppWorld::captureOne());
  EXPECT_TRUE(world.button().isVisible());
}

TEST(FrontApplication, ThisProgramKeepsTheFocusWhenCaptureOneDoesNotRun) {
  AppWorld world;
  world.start();
  world.fake.workspace.running.clear();
  world.fake.workspace.activateSelf();
  world.turn();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), fake::FakePlatform::self());
}

TEST(FrontApplication, ThisProgramKeepsTheFocusWhileTheCreateFolderWindowIsOpen) {
  AppWorld world;
  world.start();
  world.features.createFolder.visible = true;
  world.fake.workspace.activateSelf();
  world.turn();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), fake::FakePlatform::self());
  EXPECT_TRUE(world.button().isVisible());
}

TEST(FrontApplication, AbsentIdentifiersOnBothSidesCountAsThisProgram) {
  AppWorld world;
  world.fake.ownBundle.bundleIdentifier = std::nullopt;
  world.start();
  world.fake.workspace.userActivates(platform::RunningApplication{12, "Sans identité", std::nullopt});
  world.turn();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), AppWorld::captureOne());
}

TEST(FrontApplication, ReactionsHaveATurnOfTheirOwn) {
  AppWorld world;
  world.start();
  world.fake.workspace.userActivates(AppWorld::notes());
  EXPECT_TRUE(world.button().isVisible()) << "reacted inside the notification";
  world.turn();
  EXPECT_FALSE(world.button().isVisible());
}

TEST(WindowMode, SwitchingOffHidesButtonAndMirrorAndPostsWindowDidHideOnce) {
  AppWorld world;
  world.start();
  int hidden = 0;
  auto const observer = world.environment.notifications().addObserver(notifications::kWindowDidHide,
                                                                      [&hidden](auto const&) { ++hidden; });
  auto const window = world.fake.panels.makePanel({}, panelClass());
  window->orderFrontRegardless();
  world.features.mirror.window = window.get();
  world.fake.journal.clear();
  mirror::FloatingButtonState::shared().toggleWindowMode();
  world.turn();
  EXPECT_EQ(hidden, 1);
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(world.button().isVisible());
  EXPECT_EQ(world.fake.journal.entries().front(), "mirror.userWantsWindowVisible false");
}

TEST(WindowMode, SwitchingOffWithTheMirrorHiddenStillPostsWindowDidHideOnce) {
  for (auto const withFeatures : {WithFeatures::yes, WithFeatures::no}) {
    AppWorld world(withFeatures);
    world.start();
    int hidden = 0;
    auto const observer = world.environment.notifications().addObserver(notifications::kWindowDidHide,
                                                                        [&hidden](auto const&) { ++hidden; });
    mirror::FloatingButtonState::shared().setWindowModeEnabled(false);
    world.turn();
    EXPECT_EQ(hidden, 1);
  }
}

TEST(WindowMode, SwitchingOnShowsTheButtonAndPostsNothing) {
  AppWorld world;
  world.fake.defaults.values["windowModeEnabled"] = false;
  world.start();
  int hidden = 0;
  auto const observer = world.environment.notifications().addObserver(notifications::kWindowDidHide,
                                                                      [&hidden](auto const&) { ++hidden; });
  mirror::FloatingButtonState::shared().toggleWindowMode();
  world.turn();
  EXPECT_EQ(hidden, 0);
  EXPECT_TRUE(world.button().isVisible());
}

TEST(Hotkey, TogglesTheMirrorAndGivesTheFocusToCaptureOne) {
  AppWorld world;
  world.start();
  world.environment.notifications().post(notifications::kHotkeyPressed);
  EXPECT_TRUE(world.fake.journal.entries().empty());
  world.turn();
  EXPECT_EQ(world.fake.journal.entries(), (Strings{"mirror.toggleWindow", "workspace.activate Capture One"}));
}

TEST(Hotkey, HasNoEffectWithWindowModeOff) {
  AppWorld world;
  world.fake.defaults.values["windowModeEnabled"] = false;
  world.start();
  world.environment.notifications().post(notifications::kHotkeyPressed);
  world.turn();
  EXPECT_TRUE(world.fake.journal.entries().empty());
}

}  // namespace
}  // namespace morla::app
