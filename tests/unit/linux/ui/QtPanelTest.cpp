#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QApplication>
#include <QWidget>

#include "base/Trace.h"
#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

using testing::ElementsAre;
using Form = DesktopClient::Form;

class QtPanelTest : public RoundButtonTest {
 protected:
  bool isShownAt(BottomLeftRect const& frame) {
    return runUntilSeen([&] { return client_.isShown(window()) && client_.frame(window()) == pixelRect(frame); });
  }
};

TEST_F(QtPanelTest, IsHiddenUntilItIsOrderedToTheFront) {
  settle();
  EXPECT_FALSE(panel_->isVisible());
  EXPECT_FALSE(client_.isShown(window()));
  panel_->orderFrontRegardless();
  EXPECT_TRUE(panel_->isVisible());
  EXPECT_TRUE(client_.isShown(window()));
  panel_->orderOut();
  EXPECT_FALSE(panel_->isVisible());
  EXPECT_FALSE(client_.isShown(window()));
}

TEST_F(QtPanelTest, IsUnknownToTheWindowManagerAndFoundByItsName) {
  showAt({100, 100});
  ASSERT_NE(window(), 0U);
  EXPECT_TRUE(client_.isOverrideRedirect(window()));
  EXPECT_EQ(client_.className(window()), "FloatingButtonPanel");
}

TEST_F(QtPanelTest, StandsInTheBottomLeftCornerUnlessAskedOtherwise) {
  panel_->orderFrontRegardless();
  EXPECT_TRUE(isShownAt({{0, 0}, {40, 40}}));
}

TEST_F(QtPanelTest, StandsExactlyWhereItWasAskedTo) {
  showAt({123, 77});
  EXPECT_TRUE(isShownAt({{123, 77}, {40, 40}}));
  panel_->setFrameOrigin({200, 31});
  EXPECT_TRUE(isShownAt({{200, 31}, {40, 40}}));
}

TEST_F(QtPanelTest, KeepsItsBottomLeftCornerWhenItsSizeChanges) {
  showAt({100, 100});
  panel_->setContentSize({60, 80});
  EXPECT_EQ(panel_->frame(), (BottomLeftRect{{100, 100}, {60, 80}}));
  EXPECT_TRUE(isShownAt({{100, 100}, {60, 80}}));
}

TEST_F(QtPanelTest, LeavesTheFocusWhereItIsWhenShownClickedAndDragged) {
  auto const other = client_.openWindow("Other", Form::normal, {600, 100, 300, 200});
  ASSERT_EQ(client_.focus(), other);
  showAt({100, 100});
  EXPECT_EQ(client_.focus(), other);

  int released = 0;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseUp, [&](auto const&) {
    ++released;
    return platform::MonitorDecision::pass;
  });
  client_.click(pixels({120, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return released == 1; }));
  EXPECT_EQ(client_.focus(), other);
  EXPECT_EQ(client_.activeWindow(), other);

  client_.press(1);
  client_.movePointer(pixels({150, 150}));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return released == 2; }));
  EXPECT_EQ(client_.focus(), other);
  EXPECT_EQ(client_.activeWindow(), other);
  client_.closeWindow(other);
}

TEST_F(QtPanelTest, StaysAboveAFullScreenWindowThatIsActivated) {
  showAt({100, 100});
  auto const other = client_.openWindow("Full", Form::fullScreen, {0, 0, 400, 300});
  EXPECT_TRUE(runUntilSeen([&] { return client_.isAbove(window(), other); }));
  auto const second = client_.openWindow("Second", Form::fullScreen, {0, 0, 400, 300});
  EXPECT_TRUE(runUntilSeen([&] { return client_.isAbove(window(), second); }));
  client_.activate(other);
  EXPECT_TRUE(runUntilSeen([&] { return client_.isAbove(window(), other); }));
  EXPECT_EQ(client_.focus(), other);
  client_.closeWindow(other);
  client_.closeWindow(second);
}

TEST_F(QtPanelTest, StandsBelowPanelsOfAHigherLevelAlsoWhenShownLater) {
  auto spec = roundButtonSpec();
  spec.name = "MenuBarPanel";
  spec.level = view::Level::status;
  auto const higher = ui_->panels().makePanel(spec, behaviour_);
  higher->setContentSize({40, 40});
  higher->orderFrontRegardless();
  panel_->orderFrontRegardless();
  EXPECT_TRUE(runUntilSeen([&] { return client_.isAbove(client_.find("MenuBarPanel"), window()); }));
}

TEST_F(QtPanelTest, OfTheNormalLevelGoesBelowAWindowThatIsActivatedButStaysShown) {
  auto const other = client_.openWindow("Other", Form::normal, {600, 100, 300, 200});
  auto const second = client_.openWindow("Second", Form::normal, {700, 150, 300, 200});
  auto spec = roundButtonSpec();
  spec.name = "NormalPanel";
  spec.level = view::Level::normal;
  auto const normal = ui_->panels().makePanel(spec, behaviour_);
  normal->setContentSize({40, 40});
  normal->orderFrontRegardless();
  settle();
  auto const id = client_.find("NormalPanel");
  EXPECT_TRUE(client_.isAbove(id, second));
  client_.activate(other);
  EXPECT_TRUE(runUntilSeen([&] { return client_.isAbove(other, id); }));
  EXPECT_TRUE(client_.isAbove(id, second));
  EXPECT_TRUE(client_.isShown(id));
  normal->orderFrontRegardless();
  EXPECT_TRUE(client_.isAbove(id, other));
  client_.closeWindow(other);
  client_.closeWindow(second);
}

TEST_F(QtPanelTest, IsDraggedExactlyByItsBackground) {
  showAt({100, 100});
  client_.movePointer(pixels({110, 120}));
  client_.press(1);
  for (int step = 1; step <= 30; ++step) client_.movePointer(pixels({110.0 + 3 * step, 120.0 + 2 * step}));
  client_.release(1);
  EXPECT_TRUE(isShownAt({{190, 160}, {40, 40}}));
  EXPECT_EQ(panel_->frame(), (BottomLeftRect{{190, 160}, {40, 40}}));
}

TEST_F(QtPanelTest, IsNotDraggedWhereItIsNotMovable) {
  auto spec = roundButtonSpec();
  spec.name = "FixedPanel";
  spec.isMovableByBackground = false;
  auto const fixed = ui_->panels().makePanel(spec, behaviour_);
  fixed->setContentSize({40, 40});
  fixed->setContent(makeRoundButton());
  fixed->setFrameOrigin({100, 100});
  fixed->orderFrontRegardless();
  bool isReleased = false;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseUp, [&](auto const&) {
    isReleased = true;
    return platform::MonitorDecision::pass;
  });
  client_.movePointer(pixels({120, 120}));
  client_.press(1);
  client_.movePointer(pixels({160, 160}));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return isReleased; }));
  EXPECT_EQ(fixed->frame().origin, (BottomLeftPoint{100, 100}));
}

TEST_F(QtPanelTest, AnnouncesItsMovesOnceATurnOfTheLoop) {
  int moves = 0;
  auto const moved = panel_->onDidMove([&] { ++moves; });
  panel_->setFrameOrigin({10, 10});
  panel_->setFrameOrigin({20, 20});
  EXPECT_EQ(moves, 0);
  settle();
  EXPECT_EQ(moves, 1);
  panel_->setFrameOrigin({20, 20});
  panel_->setContentSize({50, 50});
  settle();
  EXPECT_EQ(moves, 1);
  panel_->setFrameOrigin({21, 20});
  settle();
  EXPECT_EQ(moves, 2);
}

TEST_F(QtPanelTest, AnnouncesAMoveToNobodyWhoBeganToObserveAfterIt) {
  panel_->setFrameOrigin({10, 10});
  int moves = 0;
  auto const moved = panel_->onDidMove([&] { ++moves; });
  settle();
  EXPECT_EQ(moves, 0);
}

TEST_F(QtPanelTest, AnnouncesAMoveByTheUser) {
  showAt({100, 100});
  std::vector<BottomLeftPoint> origins;
  auto const moved = panel_->onDidMove([&] { origins.push_back(panel_->frame().origin); });
  client_.movePointer(pixels({120, 120}));
  client_.press(1);
  client_.movePointer(pixels({140, 110}));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return !origins.empty() && origins.back() == BottomLeftPoint{120, 90}; }));
}

TEST_F(QtPanelTest, IsShownAtTheNearestPlaceWhenItsOwnIsOnNoDisplay) {
  int moves = 0;
  panel_->setFrameOrigin({-5000, 9000});
  settle();
  auto const moved = panel_->onDidMove([&] { ++moves; });
  panel_->orderFrontRegardless();
  EXPECT_TRUE(isShownAt({{0, screenHeight() - 40}, {40, 40}}));
  EXPECT_EQ(panel_->frame(), (BottomLeftRect{{-5000, 9000}, {40, 40}}));
  EXPECT_EQ(moves, 0);
}

TEST_F(QtPanelTest, ReturnsToItsPlaceWithTheDisplay) {
  double const left = PrivateDesktop::kMonitorWidth / scale();
  BottomLeftRect const onTheRight{{left + 200, 150}, {40, 40}};
  showAt(onTheRight.origin);
  ASSERT_TRUE(isShownAt(onTheRight));
  int moves = 0;
  auto const moved = panel_->onDidMove([&] { ++moves; });

  testDesktop().unplugRightMonitor();
  EXPECT_TRUE(isShownAt({{left - 40, 150}, {40, 40}}));
  EXPECT_EQ(panel_->frame(), onTheRight);

  testDesktop().plugRightMonitor();
  EXPECT_TRUE(isShownAt(onTheRight));
  EXPECT_EQ(moves, 0);
}

TEST_F(QtPanelTest, ThatCannotBeMovedIsShownInFull) {
  auto spec = roundButtonSpec();
  spec.name = "MenuBarPanel";
  spec.isMovableByBackground = false;
  auto const panel = ui_->panels().makePanel(spec, behaviour_);
  panel->setContentSize({240, 232});
  panel->setFrameOrigin({-100, 100});
  panel->orderFrontRegardless();
  EXPECT_TRUE(runUntilSeen(
      [&] { return client_.frame(client_.find("MenuBarPanel")) == pixelRect(BottomLeftRect{{0, 100}, {240, 232}}); }));
  EXPECT_EQ(panel->frame().origin, (BottomLeftPoint{-100, 100}));
}

TEST_F(QtPanelTest, TellsTheTraceWhatHappens) {
  std::vector<std::string> lines;
  Trace const trace([&](std::string const& line) { lines.push_back(line); },
                    [] { return std::chrono::milliseconds(7); });
  panel_->setContentSize({42, 42});
  panel_->orderFrontRegardless();
  panel_->orderFrontRegardless();
  panel_->setFrameOrigin({10, 20});
  settle();
  panel_->orderOut();
  panel_->orderOut();
  auto const line = [](std::string const& event, std::string const& frame) {
    return R"({"t":7,"event":")" + event + R"(","frame":)" + frame + R"(,"panel":"FloatingButtonPanel"})";
  };
  EXPECT_THAT(lines, ElementsAre(line("resized", "[0,0,42,42]"), line("shown", "[0,0,42,42]"),
                                 line("moved", "[10,20,42,42]"), line("hidden", "[10,20,42,42]")));
}

TEST_F(QtPanelTest, IsCalledByTheLabelOfItsContent) {
  showAt({100, 100});
  QStringList names;
  for (auto* const widget : QApplication::topLevelWidgets()) {
    if (auto* const interface = QAccessible::queryAccessibleInterface(widget)) {
      names << interface->text(QAccessible::Name);
    }
  }
  EXPECT_TRUE(names.contains("Fenêtre")) << names.join(", ").toStdString();
}

TEST_F(QtPanelTest, LetsTheProgramSleepWhileNothingHappens) {
  showAt({100, 100});
  auto const item = ui_->statusBar().makeStatusItem(platform::kSquareStatusItemLength);
  bool isQuiet = false;
  auto const quiet = ui_->mainLoop().after(std::chrono::milliseconds(300), [&] { isQuiet = true; });
  ASSERT_TRUE(runUntil([&] { return isQuiet; }));

  int wakeUps = 0;
  bool isOver = false;
  QObject context;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context,
                   [&] { ++wakeUps; });
  auto const over = ui_->mainLoop().after(std::chrono::milliseconds(500), [&] { isOver = true; });
  ASSERT_TRUE(runUntil([&] { return isOver; }));
  EXPECT_LE(wakeUps, 5);
}

TEST_F(QtPanelTest, OutlivesItsWindowsNeighbours) {
  // Windows that vanish between a question and its answer are no errors.
  showAt({100, 100});
  for (int i = 0; i < 20; ++i) {
    auto const other = client_.openWindow("Brief", Form::normal, {600, 100, 300, 200});
    client_.closeWindow(other);
  }
  settle();
  EXPECT_TRUE(client_.isShown(window()));
}

}  // namespace
}  // namespace morla::linux
