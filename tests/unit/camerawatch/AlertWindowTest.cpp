#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "CameraWatchWorld.h"
#include "camerawatch/Alert.h"

namespace morla::camerawatch {
namespace {

constexpr BottomLeftPoint kCentred{(1920.0 - 300) / 2, (1080.0 - 80) / 2};

struct World {
  fake::FakePlatform fake;
  AlertWindow window;

  fake::FakePanel& create(std::string_view positionKey) {
    window = createAlertWindow(fake.panels, fake.defaults, positionKey);
    fake.loop.runReady();
    return fake.panels.panel(positionKey);
  }
};

TEST(AlertWindow, IsABorderlessFloatingPanelOnEverySpaceThatCanBeDragged) {
  World world;
  auto const& spec = world.create("isoAlert").spec();
  EXPECT_EQ(spec.contentRect, (BottomLeftRect{{0, 0}, {300, 80}}));
  EXPECT_EQ(spec.styleMask.bits, 0x80u);
  EXPECT_EQ(static_cast<int>(spec.level), 3);
  EXPECT_EQ(spec.collectionBehaviour.bits, 257u);
  EXPECT_FALSE(spec.isOpaque);
  EXPECT_TRUE(spec.hasShadow);
  EXPECT_TRUE(spec.isMovableByBackground);
  EXPECT_FALSE(spec.hidesOnDeactivate) << "it must stand while Capture One is in front";
}

TEST(AlertWindow, IsHiddenUntilItIsShown) {
  World world;
  EXPECT_FALSE(world.create("isoAlert").isVisible());
}

TEST(AlertWindow, AClickOnItTakesTheFocusFromNobody) {
  CameraWatchWorld world;
  world.start();
  world.fake.workspace.userActivates(captureOne());
  world.raiseAlert();
  auto& panel = world.fake.panels.panel("formatAlert");
  EXPECT_FALSE(panel.behaviour().canBecomeKey());
  EXPECT_FALSE(panel.behaviour().canBecomeMain());
  panel.send(view::PanelEvent::leftMouseDown);
  panel.send(view::PanelEvent::leftMouseUp);
  world.fake.loop.runReady();
  EXPECT_EQ(world.fake.workspace.frontmostApplication(), captureOne());
  EXPECT_TRUE(world.fake.workspace.activated.empty());
}

TEST(AlertPlace, IsTheMiddleUnlessBothNumbersAreStored) {
  using Stored = std::map<std::string, platform::DefaultsValue, std::less<>>;
  struct Row {
    std::string label;
    Stored stored;
    BottomLeftPoint expected;
  };
  double const infinity = std::numeric_limits<double>::infinity();
  double const nan = std::numeric_limits<double>::quiet_NaN();
  for (auto const& [label, stored, expected] : {
           Row{"nothing", {}, kCentred},
           Row{"both", {{"isoAlertX", 12.5}, {"isoAlertY", -30.0}}, {12.5, -30}},
           Row{"whole numbers", {{"isoAlertX", std::int64_t{12}}, {"isoAlertY", std::int64_t{0}}}, {12, 0}},
           Row{"x alone", {{"isoAlertX", 12.5}}, kCentred},
           Row{"y alone", {{"isoAlertY", 12.5}}, kCentred},
           Row{"a text", {{"isoAlertX", std::string("12")}, {"isoAlertY", 5.0}}, kCentred},
           Row{"a boolean", {{"isoAlertX", 5.0}, {"isoAlertY", true}}, kCentred},
           Row{"infinite", {{"isoAlertX", 5.0}, {"isoAlertY", infinity}}, kCentred},
           Row{"not a number", {{"isoAlertX", nan}, {"isoAlertY", 5.0}}, kCentred},
           Row{"another kind's", {{"formatAlertX", 5.0}, {"formatAlertY", 5.0}}, kCentred},
       }) {
    World world;
    world.fake.defaults.values = stored;
    EXPECT_EQ(world.create("isoAlert").frame().origin, expected) << label;
    EXPECT_TRUE(world.fake.defaults.writes.empty()) << label << ": opening is not a move of the user's";
  }
}

TEST(AlertPlace, IsStoredOnEachMoveXThenY) {
  World world;
  auto& panel = world.create("shutterAlert");
  panel.dragTo({640.5, 480});
  EXPECT_TRUE(world.fake.defaults.writes.empty());
  world.fake.loop.runReady();
  EXPECT_EQ(world.fake.defaults.writes,
            (std::vector<platform::DefaultsEntry>{{"shutterAlertX", 640.5}, {"shutterAlertY", 480.0}}));
  panel.dragTo({1, 2});
  panel.dragTo({3, 4});
  world.fake.loop.runReady();
  EXPECT_EQ(world.fake.defaults.writes.size(), 4u) << "one pair a turn of the loop";
  EXPECT_EQ(world.fake.defaults.number("shutterAlertX"), 3.0);
  EXPECT_EQ(world.fake.defaults.number("shutterAlertY"), 4.0);
}

TEST(AlertPlace, AFirstAlertIsCentredAndAfterADragAndARestartOpensAtTheDraggedPlace) {
  std::map<std::string, platform::DefaultsValue, std::less<>> stored;
  {
    CameraWatchWorld world;
    world.start();
    world.raiseAlert();
    auto& panel = world.fake.panels.panel("formatAlert");
    EXPECT_EQ(panel.frame(), (BottomLeftRect{kCentred, {300, 80}}));
    panel.dragTo({33, 44});
    world.fake.loop.runReady();
    stored = world.fake.defaults.values;
  }
  CameraWatchWorld restarted;
  restarted.fake.defaults.values = stored;
  restarted.start();
  restarted.raiseAlert();
  EXPECT_EQ(restarted.fake.panels.panel("formatAlert").frame().origin, (BottomLeftPoint{33, 44}));
}

TEST(AlertPlace, EachKindHasItsOwnKey) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  monitor.showFormatAlert("JPEG");
  monitor.showIsoAlert("800", "400");
  monitor.showApertureAlert("f/4", "f/8");
  monitor.showShutterAlert("1/60", "1/125");
  double place = 0;
  for (std::string const key : {"formatAlert", "isoAlert", "apertureAlert", "shutterAlert"}) {
    ++place;
    world.fake.panels.panel(key).dragTo({place, 10 * place});
    world.fake.loop.runReady();
    EXPECT_EQ(world.fake.defaults.number(key + "X"), place);
    EXPECT_EQ(world.fake.defaults.number(key + "Y"), 10 * place);
  }
  EXPECT_EQ(world.fake.defaults.values.size(), 8u);
}

TEST(AlertPlace, NothingIsStoredAnyMoreOnceThePanelHasGone) {
  World world;
  world.create("isoAlert").dragTo({1, 2});
  world.window = {};
  world.fake.loop.runReady();
  EXPECT_TRUE(world.fake.defaults.writes.empty());
}

}  // namespace
}  // namespace morla::camerawatch
