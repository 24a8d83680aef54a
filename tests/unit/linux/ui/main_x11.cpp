#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <cstdlib>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

/// Only once a test runs, so that listing the tests starts nothing.
class Desktop : public testing::Environment {
 public:
  void SetUp() override {
    desktop = std::make_unique<PrivateDesktop>(testWindowManager());
    application = std::make_unique<QApplication>(argumentCount, arguments);
  }
  void TearDown() override {
    application.reset();
    desktop.reset();
  }

  std::unique_ptr<PrivateDesktop> desktop;
  std::unique_ptr<QApplication> application;

 private:
  int argumentCount = 1;
  char name[18] = "linux_ui_x11_test";
  char* arguments[2] = {name, nullptr};
};

Desktop* environment = nullptr;

}  // namespace

PrivateDesktop& testDesktop() {
  return *environment->desktop;
}

std::string const& testWindowManager() {
  static std::string const name = [] {
    auto const* asked = std::getenv("MORLA_TEST_WINDOW_MANAGER");
    return std::string(asked == nullptr ? "openbox" : asked);
  }();
  return name;
}

view::Node makeRoundButton() {
  view::Drawing const disc{{40, 40}, {view::FillOval{{{0, 0}, {40, 40}}, view::kBlack}}};
  view::Drawing const screen{{20, 18},
                             {view::FillRoundedRect{{{0, 4}, {20, 14}}, 2.5, view::kWhite},
                              view::FillRoundedRect{{{2, 6}, {16, 10}}, 1, view::kBlack},
                              view::FillRoundedRect{{{8, 1}, {4, 3}}, 0, view::kWhite},
                              view::FillRoundedRect{{{5, 0}, {10, 1.5}}, 0.75, view::kWhite}}};
  return view::node(view::ZStack{{view::node(view::Canvas{disc}), view::node(view::Canvas{screen})}})
      .labelled("Fenêtre");
}

view::PanelSpec roundButtonSpec() {
  view::PanelSpec spec;
  spec.name = "FloatingButtonPanel";
  spec.styleMask = view::kNonactivatingPanel;
  spec.level = view::Level::floating;
  spec.isOpaque = false;
  spec.hasShadow = false;
  spec.isMovableByBackground = true;
  return spec;
}

QImage pictureOf(PixelRect const& area) {
  auto* const screen = QGuiApplication::primaryScreen();
  double const scale = screen->devicePixelRatio();
  auto const picture = screen->grabWindow(0, static_cast<int>(area.x / scale), static_cast<int>(area.y / scale),
                                          static_cast<int>(area.width / scale), static_cast<int>(area.height / scale));
  return picture.toImage();
}

}  // namespace morla::linux

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  morla::linux::environment = new morla::linux::Desktop;
  testing::AddGlobalTestEnvironment(morla::linux::environment);
  return RUN_ALL_TESTS();
}
