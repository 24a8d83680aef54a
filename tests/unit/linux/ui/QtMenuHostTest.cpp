#include <QApplication>
#include <QMenu>
#include <chrono>
#include <cstdlib>
#include <vector>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

using platform::Menu;
using platform::MenuItem;
using testing::HasSubstr;

class QtMenuHostTest : public X11Test {
 protected:
  static Menu makeMenu(std::function<void()> quit) {
    Menu menu;
    menu.items.push_back(std::make_shared<MenuItem>(MenuItem{"Fenêtre & Co", [] {}, "", true}));
    menu.items.push_back(std::make_shared<MenuItem>(MenuItem{"Quitter", std::move(quit), "", false}));
    return menu;
  }

  static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

  void popUp(Menu const& menu, BottomLeftPoint at) {
    ui_->menus().popUp(menu, at);
    ASSERT_TRUE(runUntilSeen([] { return openMenu() != nullptr; }));
    ASSERT_TRUE(runUntilSeen([&] { return client_.isShown(id()); }));
  }
  static XWindowId id() { return openMenu()->winId(); }

  /// For a person to look at, in the folder of the environment variable MORLA_TEST_PICTURES.
  void keepPicture(std::string const& name) {
    auto const* folder = std::getenv("MORLA_TEST_PICTURES");
    if (folder == nullptr) return;
    auto const frame = client_.frame(id());
    EXPECT_TRUE(runUntilSeen([&] { return pictureOf(frame).pixelColor(5, 5) != QColor(Qt::black); }));
    pictureOf({frame.x - 10, frame.y - 10, frame.width + 20, frame.height + 20})
        .save(QString("%1/%2-%3x.png").arg(folder, name.c_str()).arg(scale()));
  }

  PixelPoint rowPixel(int row) {
    auto* const menu = openMenu();
    auto const centre = menu->mapToGlobal(menu->actionGeometry(menu->actions().at(row)).center());
    return {static_cast<int>(centre.x() * scale()), static_cast<int>(centre.y() * scale())};
  }
};

TEST_F(QtMenuHostTest, ShowsAMenuWithItsCornerAtThePlaceAndNoRowChosen) {
  popUp(makeMenu([] {}), {200, 300});
  auto const corner = pixels({200, 300});
  auto const frame = client_.frame(id());
  EXPECT_EQ(frame.x, corner.x);
  EXPECT_EQ(frame.y, corner.y);
  EXPECT_EQ(openMenu()->activeAction(), nullptr);
  keepPicture("menu");
}

TEST_F(QtMenuHostTest, HasRoundCornersWhileACompositorRuns) {
  auto const behind = client_.openWindow("Behind", DesktopClient::Form::fullScreen, {0, 0, 400, 300});
  auto const compositor = testDesktop().run({"picom", "--backend", "xrender", "--config", "/dev/null"});
  // A menu looks once whether there is one; a panel shows when we have heard of it.
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(roundButtonSpec(), behaviour);
  panel->setContentSize({40, 40});
  panel->orderFrontRegardless();
  ASSERT_TRUE(runUntilSeen([&] { return !client_.hasShape(client_.find("FloatingButtonPanel")); }));
  popUp(makeMenu([] {}), {200, 300});
  auto const frame = client_.frame(id());
  EXPECT_TRUE(runUntilSeen([&] {
    auto const picture = pictureOf(frame);
    auto const middle = picture.pixelColor(picture.width() / 2, picture.height() / 2);
    return picture.pixelColor(0, 0) == QColor(Qt::white) && middle.value() > 230 && middle.value() < 250;
  })) << "the corner shows what is behind";
  keepPicture("menu-blended");
  client_.closeWindow(behind);
}

TEST_F(QtMenuHostTest, LeavesTheFocusWhereItIs) {
  auto const other = client_.openWindow("Other", DesktopClient::Form::normal, {900, 100, 300, 200});
  popUp(makeMenu([] {}), {200, 300});
  EXPECT_EQ(client_.focus(), other);
  EXPECT_EQ(client_.activeWindow(), other);
  client_.typeEscape();
  ASSERT_TRUE(runUntilSeen([] { return openMenu() == nullptr; }));
  EXPECT_EQ(client_.focus(), other);
  EXPECT_EQ(client_.activeWindow(), other);
  client_.closeWindow(other);
}

TEST_F(QtMenuHostTest, RunsTheActionOfAChosenRowOnALaterTurn) {
  bool isChosen = false;
  bool wasOpen = true;
  popUp(makeMenu([&] {
          isChosen = true;
          wasOpen = openMenu() != nullptr;
        }),
        {200, 300});
  client_.click(rowPixel(1), 1);
  ASSERT_TRUE(runUntilSeen([&] { return isChosen; }));
  EXPECT_FALSE(wasOpen);
}

TEST_F(QtMenuHostTest, ShowsTicksAndTitlesAsTheyAre) {
  popUp(makeMenu([] {}), {200, 300});
  auto const rows = openMenu()->actions();
  ASSERT_EQ(rows.size(), 2);
  EXPECT_TRUE(rows[0]->isChecked());
  EXPECT_FALSE(rows[1]->isChecked());
  EXPECT_EQ(rows[0]->text(), "Fenêtre && Co") << "a single ampersand would underline a letter";
}

TEST_F(QtMenuHostTest, IsClosedByAClickElsewhereThatDoesNothingElse) {
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(roundButtonSpec(), behaviour);
  panel->setContentSize({40, 40});
  panel->setContent(makeRoundButton());
  panel->setFrameOrigin({400, 100});
  panel->orderFrontRegardless();
  using platform::MouseEventKind;
  std::vector<MouseEventKind> seen;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(
      platform::kLeftMouseDown | platform::kLeftMouseDragged | platform::kLeftMouseUp, [&](auto const& event) {
        seen.push_back(event.kind);
        return platform::MonitorDecision::pass;
      });
  bool isChosen = false;
  popUp(makeMenu([&] { isChosen = true; }), {100, 300});
  client_.movePointer(pixels({420, 120}));
  client_.press(1);
  ASSERT_TRUE(runUntilSeen([] { return openMenu() == nullptr; }));
  client_.movePointer(pixels({422, 122}));
  client_.release(1);
  // The next click is an ordinary one again, and what came before it has been seen by then.
  client_.click(pixels({420, 120}), 1);
  EXPECT_TRUE(runUntilSeen([&] { return seen.size() >= 2 && seen.back() == MouseEventKind::leftUp; }));
  EXPECT_THAT(seen, testing::ElementsAre(MouseEventKind::leftDown, MouseEventKind::leftUp));
  EXPECT_FALSE(isChosen);
}

TEST_F(QtMenuHostTest, StaysOpenAfterTheRightClickThatOpenedIt) {
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(roundButtonSpec(), behaviour);
  panel->setContentSize({40, 40});
  panel->setContent(makeRoundButton());
  panel->setFrameOrigin({100, 300});
  panel->orderFrontRegardless();
  bool isChosen = false;
  auto const monitor = ui_->eventMonitors().addLocalMonitor(platform::kRightMouseDown, [&](auto const& event) {
    auto const origin = panel->frame().origin;
    ui_->menus().popUp(makeMenu([&] { isChosen = true; }),
                       {origin.x + event.locationInPanel.x, origin.y + event.locationInPanel.y});
    return platform::MonitorDecision::consume;
  });
  client_.click(pixels({120, 320}), 3);
  ASSERT_TRUE(runUntilSeen([&] { return openMenu() != nullptr && client_.isShown(id()); }));
  settle();
  ASSERT_NE(openMenu(), nullptr);
  client_.click(rowPixel(1), 1);
  EXPECT_TRUE(runUntilSeen([&] { return isChosen; }));
}

TEST_F(QtMenuHostTest, ClosesAnOpenMenuFirst) {
  popUp(makeMenu([] {}), {200, 300});
  auto const first = id();
  Menu second;
  second.items.push_back(std::make_shared<MenuItem>(MenuItem{"Autre", [] {}, "", false}));
  popUp(second, {400, 300});
  EXPECT_EQ(openMenu()->actions().size(), 1);
  EXPECT_FALSE(client_.isShown(first));
}

TEST_F(QtMenuHostTest, WaitsForAPointerThatAnotherProgramHasForAMoment) {
  ASSERT_TRUE(client_.grabPointer());
  ui_->menus().popUp(makeMenu([] {}), {200, 300});
  EXPECT_EQ(openMenu(), nullptr);
  client_.ungrabPointer();
  ASSERT_TRUE(runUntilSeen([] { return openMenu() != nullptr; }));
  ASSERT_TRUE(runUntilSeen([&] { return client_.isShown(id()); }));
}

TEST_F(QtMenuHostTest, GivesUpWhenAnotherProgramKeepsThePointer) {
  ASSERT_TRUE(client_.grabPointer());
  testing::internal::CaptureStdout();
  ui_->menus().popUp(makeMenu([] {}), {200, 300});
  bool isOver = false;
  auto const longAfter = ui_->mainLoop().after(std::chrono::seconds(1), [&] { isOver = true; });
  ASSERT_TRUE(runUntilSeen([&] { return isOver; }));
  EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("[Menu] Not shown"));
  EXPECT_EQ(openMenu(), nullptr);
  client_.ungrabPointer();
  popUp(makeMenu([] {}), {200, 300});
}

}  // namespace
}  // namespace morla::linux
