#include <QWidget>
#include <cstdlib>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

view::Drawing makeStatusIcon() {
  return {
      {18, 18},
      {view::FillOval{{{0, 0}, {18, 18}}, view::kBlack}, view::FillRoundedRect{{{4.5, 4.5}, {9, 9}}, 1, view::kWhite},
       view::StrokeLine{{9, 4.5}, {9, 13.5}, 0.7, view::kBlack},
       view::StrokeLine{{4.5, 9}, {13.5, 9}, 0.7, view::kBlack}}};
}

class QtStatusBarTest : public X11Test {
 protected:
  static support::ChildProcess startTray() {
    return testDesktop().run({"trayer", "--edge", "bottom", "--align", "left", "--widthtype", "request", "--height",
                              "24", "--SetDockType", "true", "--monitor", "0"});
  }

  std::unique_ptr<platform::StatusItem> makeItem() {
    auto item = ui_->statusBar().makeStatusItem(platform::kSquareStatusItemLength);
    item->button()->setImage(makeStatusIcon());
    item->button()->setAction([this](platform::StatusItemButton& button) {
      ++clicks_;
      frameAtClick_ = button.frameOnScreen();
    });
    return item;
  }

  XWindowId standIn() { return client_.find("StatusItem"); }
  /// In a tray that has made room for it: a click on it reaches a window of ours, which stands in one of the tray's.
  bool isInTray(platform::StatusItem& item) {
    auto const frame = item.button()->frameOnScreen();
    if (standIn() != 0 || !frame.has_value() || frame->origin.y > 60 / scale()) return false;
    auto const place = pixels(centreOf(*frame));
    return QWidget::find(client_.innermostAt(place)) != nullptr && QWidget::find(client_.topLevelAt(place)) == nullptr;
  }

  /// A tray may still move its icons about when it has taken them: the pointer follows until it is known to be on it.
  void clickInTray(platform::StatusItem& item) {
    std::optional<PixelPoint> pointed;
    ASSERT_TRUE(runUntilSeen([&] {
      if (!isInTray(item)) return false;
      auto const place = pixels(centreOf(*item.button()->frameOnScreen()));
      if (!pointed.has_value() || pointed->x != place.x || pointed->y != place.y) client_.movePointer(place);
      pointed = place;
      auto const* const icon = QWidget::find(client_.innermostAt(place));
      return icon != nullptr && icon->underMouse();
    }));
    client_.click(*pointed, 1);
  }

  /// For a person to look at, in the folder of the environment variable MORLA_TEST_PICTURES.
  void keepPicture(std::string const& name, BottomLeftRect const& frame) {
    auto const* folder = std::getenv("MORLA_TEST_PICTURES");
    if (folder == nullptr) return;
    BottomLeftRect const area{{frame.origin.x - 10, frame.origin.y - 2},
                              {frame.size.width + 20, frame.size.height + 4}};
    pictureOf(pixelRect(area)).save(QString("%1/%2-%3x.png").arg(folder, name.c_str()).arg(scale()));
  }

  int clicks_ = 0;
  std::optional<BottomLeftRect> frameAtClick_;
};

TEST_F(QtStatusBarTest, HasAWindowOfItsOwnWithoutATray) {
  auto const item = makeItem();
  // The server may still be about to notice the end of the tray of another test.
  ASSERT_TRUE(runUntilSeen([&] { return standIn() != 0; }));
  EXPECT_TRUE(client_.isShown(standIn()));
  EXPECT_TRUE(client_.isOverrideRedirect(standIn()));
  auto const frame = item->button()->frameOnScreen();
  ASSERT_TRUE(frame.has_value());
  EXPECT_EQ(client_.frame(standIn()), pixelRect(*frame));
  EXPECT_GT(frame->origin.x, PrivateDesktop::kMonitorWidth / scale() - 40);
  EXPECT_GT(frame->origin.y, screenHeight() - 40);

  client_.click(pixels(centreOf(*frame)), 1);
  ASSERT_TRUE(runUntilSeen([&] { return clicks_ == 1; }));
  EXPECT_EQ(frameAtClick_, frame);
  keepPicture("status-item-own-window", *frame);
  client_.click(pixels(centreOf(*frame)), 1);
  EXPECT_TRUE(runUntilSeen([&] { return clicks_ == 2; })) << "a quick second click is a click as well";
}

TEST_F(QtStatusBarTest, IsGoneWithItsItem) {
  auto item = makeItem();
  ASSERT_TRUE(runUntilSeen([&] { return standIn() != 0; }));
  item.reset();
  settle();
  EXPECT_TRUE(runUntilSeen([&] { return standIn() == 0; }));
}

TEST_F(QtStatusBarTest, LivesInATrayThatIsThere) {
  auto const tray = startTray();
  auto const item = makeItem();
  ASSERT_TRUE(runUntilSeen([&] { return isInTray(*item); }));
  keepPicture("status-item-in-tray", *item->button()->frameOnScreen());
}

TEST_F(QtStatusBarTest, FollowsATrayThatComesGoesAndComesAgain) {
  auto const item = makeItem();
  // The server may still be about to notice the end of the tray of another test.
  ASSERT_TRUE(runUntilSeen([&] { return standIn() != 0; }));
  auto tray = startTray();
  clickInTray(*item);
  ASSERT_TRUE(runUntilSeen([&] { return clicks_ == 1; }));
  EXPECT_EQ(frameAtClick_, item->button()->frameOnScreen());

  tray.end();
  ASSERT_TRUE(runUntilSeen([&] { return standIn() != 0 && client_.isShown(standIn()); }));

  tray = startTray();
  clickInTray(*item);
  EXPECT_TRUE(runUntilSeen([&] { return clicks_ == 2; }));
}

}  // namespace
}  // namespace morla::linux
