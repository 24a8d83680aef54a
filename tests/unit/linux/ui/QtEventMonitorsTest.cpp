#include <QMouseEvent>
#include <QWidget>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

using platform::EventMask;
using platform::MonitorDecision;
using platform::MouseEvent;
using platform::MouseEventKind;
using testing::ElementsAre;

constexpr EventMask kAll =
    platform::kLeftMouseDown | platform::kLeftMouseUp | platform::kRightMouseDown | platform::kLeftMouseDragged;

class QtEventMonitorsTest : public RoundButtonTest {
 protected:
  void SetUp() override {
    RoundButtonTest::SetUp();
    showAt({100, 100});
  }
};

TEST_F(QtEventMonitorsTest, SeeEachEventOfAPanelOnce) {
  std::vector<MouseEvent> seen;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const& event) {
    seen.push_back(event);
    return MonitorDecision::pass;
  });
  client_.movePointer(pixels({110, 115}));
  client_.press(1);
  ASSERT_TRUE(runUntilSeen([&] { return seen.size() == 1; }));
  client_.movePointer(pixels({111, 115}));
  ASSERT_TRUE(runUntilSeen([&] { return seen.size() == 2; }));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return seen.size() == 3; }));
  client_.press(3);
  client_.release(3);
  ASSERT_TRUE(runUntilSeen([&] { return seen.size() == 4; }));
  settle();
  std::vector<MouseEventKind> kinds;
  for (auto const& event : seen) {
    kinds.push_back(event.kind);
    EXPECT_EQ(event.panel, panel_.get());
  }
  EXPECT_THAT(kinds, ElementsAre(MouseEventKind::leftDown, MouseEventKind::leftDragged, MouseEventKind::leftUp,
                                 MouseEventKind::rightDown));
  EXPECT_EQ(seen[0].locationInPanel, (BottomLeftPoint{10, 15}));
}

TEST_F(QtEventMonitorsTest, SeeTwoQuickClicksAsTwo) {
  std::vector<MouseEventKind> kinds;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const& event) {
    kinds.push_back(event.kind);
    return MonitorDecision::pass;
  });
  client_.click(pixels({120, 120}), 1);
  client_.click(pixels({120, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return kinds.size() >= 4; }));
  settle();
  EXPECT_THAT(kinds, ElementsAre(MouseEventKind::leftDown, MouseEventKind::leftUp, MouseEventKind::leftDown,
                                 MouseEventKind::leftUp));
}

TEST_F(QtEventMonitorsTest, SeeThePointerWhereTheEventHappened) {
  std::vector<BottomLeftPoint> places;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const&) {
    places.push_back(ui_->pointer().location());
    return MonitorDecision::pass;
  });
  // All of it has happened before we get to look.
  client_.movePointer(pixels({110, 110}));
  client_.press(1);
  client_.movePointer(pixels({150, 140}));
  client_.release(1);
  client_.movePointer(pixels({300, 300}));
  ASSERT_TRUE(runUntilSeen([&] { return places.size() == 3; }));
  EXPECT_THAT(places, ElementsAre(BottomLeftPoint{110, 110}, BottomLeftPoint{150, 140}, BottomLeftPoint{150, 140}));
  EXPECT_EQ(ui_->pointer().location(), (BottomLeftPoint{300, 300}));
}

TEST_F(QtEventMonitorsTest, SeeOnlyTheKindsTheyAskedFor) {
  int downs = 0;
  int ups = 0;
  auto const down = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseDown, [&](auto const&) {
    ++downs;
    return MonitorDecision::pass;
  });
  auto const up = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseUp, [&](auto const&) {
    ++ups;
    return MonitorDecision::pass;
  });
  client_.click(pixels({120, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return ups == 1; }));
  EXPECT_EQ(downs, 1);
}

TEST_F(QtEventMonitorsTest, SeeEverythingWhileThePanelGetsIt) {
  int ups = 0;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const& event) {
    if (event.kind == MouseEventKind::leftUp) ++ups;
    return MonitorDecision::pass;
  });
  client_.movePointer(pixels({120, 120}));
  client_.press(1);
  client_.movePointer(pixels({140, 120}));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return ups == 1; }));
  EXPECT_EQ(panel_->frame().origin, (BottomLeftPoint{120, 100}));
}

TEST_F(QtEventMonitorsTest, KeepWhatTheyConsumeFromThePanelAndFromLaterMonitors) {
  int seenLater = 0;
  bool isUp = false;
  auto const first = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const& event) {
    isUp |= event.kind == MouseEventKind::leftUp;
    return MonitorDecision::consume;
  });
  auto const second = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const&) {
    ++seenLater;
    return MonitorDecision::pass;
  });
  client_.movePointer(pixels({120, 120}));
  client_.press(1);
  client_.movePointer(pixels({140, 120}));
  client_.release(1);
  ASSERT_TRUE(runUntilSeen([&] { return isUp; }));
  settle();
  EXPECT_EQ(seenLater, 0);
  EXPECT_EQ(panel_->frame().origin, (BottomLeftPoint{100, 100}));
}

TEST_F(QtEventMonitorsTest, SeeEventsOfOtherWindowsOfOursWithoutAPanel) {
  QWidget settings(nullptr, Qt::BypassWindowManagerHint);
  settings.setGeometry(300, 100, 100, 100);
  settings.show();
  std::vector<MouseEvent> seen;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseDown, [&](auto const& event) {
    seen.push_back(event);
    return MonitorDecision::pass;
  });
  ASSERT_TRUE(runUntilSeen([&] { return client_.isShown(static_cast<XWindowId>(settings.winId())); }));
  client_.click(pixels({350, screenHeight() - 150}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return seen.size() == 1; }));
  EXPECT_EQ(seen[0].panel, nullptr);
}

TEST_F(QtEventMonitorsTest, SeeNothingOnceTheirSubscriptionEnded) {
  int seen = 0;
  auto ended = ui_->eventMonitors().addLocalMonitor(kAll, [&](auto const&) {
    ++seen;
    return MonitorDecision::pass;
  });
  ended.end();
  bool isUp = false;
  auto const other = ui_->eventMonitors().addLocalMonitor(platform::kLeftMouseUp, [&](auto const&) {
    isUp = true;
    return MonitorDecision::pass;
  });
  client_.click(pixels({120, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return isUp; }));
  EXPECT_EQ(seen, 0);
}

TEST_F(QtEventMonitorsTest, LeaveThePointerToTheServerBetweenEvents) {
  client_.movePointer(pixels({222, 111}));
  EXPECT_EQ(ui_->pointer().location(), (BottomLeftPoint{222, 111}));
}

}  // namespace
}  // namespace morla::linux
