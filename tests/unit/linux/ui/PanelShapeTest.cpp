#include <QColor>
#include <cstdlib>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

class PanelShapeTest : public RoundButtonTest {
 protected:
  void SetUp() override {
    RoundButtonTest::SetUp();
    panel_->setFrameOrigin({100, 100});
    panel_->orderFrontRegardless();
  }

  XWindowId windowAt(BottomLeftPoint place) { return client_.topLevelAt(pixels(place)); }

  QColor colourAt(BottomLeftPoint place) {
    auto const at = pixels(place);
    int const pixel = static_cast<int>(scale());
    return pictureOf({at.x, at.y, pixel, pixel}).pixelColor(0, 0);
  }

  /// Half covered pixels along the upper edge are grey only where somebody blends them.
  bool hasBlendedEdge() {
    auto const edge = pixelRect(BottomLeftRect{{100, 139}, {40, 1}});
    auto const picture = pictureOf(edge);
    for (int x = 0; x < picture.width(); ++x) {
      int const grey = picture.pixelColor(x, 0).value();
      if (grey > 20 && grey < 235) return true;
    }
    return false;
  }

  /// For a person to look at, in the folder of the environment variable MORLA_TEST_PICTURES.
  void keepPicture(std::string const& name) {
    auto const* folder = std::getenv("MORLA_TEST_PICTURES");
    if (folder == nullptr) return;
    auto const area = pixelRect(BottomLeftRect{{90, 90}, {60, 60}});
    pictureOf(area).save(QString("%1/%2-%3x.png").arg(folder, name.c_str()).arg(scale()));
  }
};

TEST_F(PanelShapeTest, IsRoundWithoutACompositor) {
  auto const behind = client_.openWindow("Behind", DesktopClient::Form::fullScreen, {0, 0, 400, 300});
  ASSERT_TRUE(runUntilSeen([&] { return client_.isAbove(window(), behind); }));
  EXPECT_TRUE(client_.hasShape(window()));
  EXPECT_TRUE(runUntilSeen([&] { return colourAt({105, 120}) == QColor(Qt::black); }));
  EXPECT_EQ(colourAt({101, 139}), QColor(Qt::white)) << "the corner shows what is behind";
  EXPECT_EQ(windowAt({120, 120}), window());
  EXPECT_NE(windowAt({101, 139}), window()) << "a click on the corner is for what is behind";
  EXPECT_FALSE(hasBlendedEdge());
  keepPicture("round-button-cut-out");
  client_.closeWindow(behind);
}

TEST_F(PanelShapeTest, IsBlendedWhileACompositorRuns) {
  auto const behind = client_.openWindow("Behind", DesktopClient::Form::fullScreen, {0, 0, 400, 300});
  {
    auto const compositor = testDesktop().run({"picom", "--backend", "xrender", "--config", "/dev/null"});
    ASSERT_TRUE(runUntilSeen([&] { return !client_.hasShape(window()); }));
    EXPECT_TRUE(runUntilSeen([&] { return hasBlendedEdge() && colourAt({101, 139}) == QColor(Qt::white); }));
    EXPECT_EQ(colourAt({105, 120}), QColor(Qt::black));
    EXPECT_TRUE(runUntilSeen([&] { return windowAt({120, 120}) == window(); })) << "not some window of the compositor";
    EXPECT_NE(windowAt({101, 139}), window()) << "a click on the corner is for what is behind";
    keepPicture("round-button-blended");
  }
  EXPECT_TRUE(runUntilSeen([&] { return client_.hasShape(window()); }));
  client_.closeWindow(behind);
}

TEST_F(PanelShapeTest, FollowsItsContent) {
  view::Drawing const lowerHalf{{40, 40}, {view::FillRoundedRect{{{0, 0}, {40, 20}}, 0, view::kBlack}}};
  panel_->setContent(view::node(view::Canvas{lowerHalf}));
  settle();
  EXPECT_EQ(windowAt({101, 101}), window());
  EXPECT_NE(windowAt({120, 130}), window());
}

}  // namespace
}  // namespace morla::linux
