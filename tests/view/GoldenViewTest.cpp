#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <string>

#include "SettingsWindowWorld.h"
#include "app/StatusImage.h"
#include "camerawatch/AlertViews.h"
#include "camerawatch/AlerteSettingsView.h"
#include "mirror/FloatingButton.h"
#include "view/View.h"

namespace morla::view {
namespace {

struct GoldenView {
  std::string name;
  std::function<Node()> describe;
};

std::ostream& operator<<(std::ostream& out, GoldenView const& view) {
  return out << view.name;
}

std::filesystem::path goldenFolder() {
  return std::filesystem::path(MORLA_SOURCE_DIR) / "tests/view/golden";
}

/// The settings of a watch whose permission check had this outcome.
Node settingsAfterCheck(std::optional<platform::ScriptReply> const& reply) {
  camerawatch::SettingsWindowWorld world;
  auto& monitor = world.start();
  if (reply) {
    world.fake.scripts.answers([&reply](std::string const&) { return *reply; });
  } else {
    world.fake.workspace.running.clear();
  }
  detach(monitor.checkPermissionState());
  world.fake.loop.advance(Duration::zero());
  return camerawatch::AlerteSettingsView(monitor).describe();
}

platform::ScriptReply error(std::int64_t number) {
  return {std::nullopt, platform::ScriptError{number, ""}};
}

/// The settings of a watch that is on and may work, after a round with this reply.
Node settingsAfterRound(std::string const& reply) {
  camerawatch::SettingsWindowWorld world(true);
  world.openReady();
  if (reply == "NOT_RUNNING") world.fake.workspace.running.clear();
  world.statusReply = reply;
  world.fake.loop.advance(std::chrono::seconds(1));
  return camerawatch::AlerteSettingsView(*world.monitor).describe();
}

/// Every switch on: one expectation met, one not, one that the camera does not offer.
Node settingsWithAlerts() {
  camerawatch::SettingsWindowWorld world(true);
  for (auto const* key : {"isoAlertEnabled", "apertureAlertEnabled", "shutterAlertEnabled"}) {
    world.fake.defaults.values[key] = true;
  }
  world.fake.defaults.values["isoExpectedValue"] = std::string("400");
  world.fake.defaults.values["apertureExpectedValue"] = std::string("f/4");
  world.fake.defaults.values["shutterExpectedValue"] = std::string("1/8000");
  world.openReady();
  return camerawatch::AlerteSettingsView(*world.monitor).describe();
}

Node settingsWithEverythingOff() {
  camerawatch::SettingsWindowWorld world;
  world.openReady();
  return camerawatch::AlerteSettingsView(*world.monitor).describe();
}

/// The whole window, while the system asks the user.
Node windowWhileRequesting() {
  camerawatch::SettingsWindowWorld world;
  world.fake.scripts.answersError(-1712);
  detach(world.start().checkPermissionState());
  world.fake.loop.advance(Duration::zero());
  auto& panel = world.open();
  world.fake.background.takes(std::chrono::seconds(1));
  panel.press("Autoriser");
  world.fake.loop.advance(Duration::zero());
  return *panel.content();
}

std::vector<GoldenView> goldenViews() {
  using namespace camerawatch;
  return {
      {"floating-button", mirror::FloatingButtonView},
      {"screen-icon", mirror::ScreenIconView},
      {"status-image", [] { return node(Canvas{app::statusImage()}); }},
      {"alert-format", [] { return FormatAlertView("JPEG"); }},
      {"alert-iso", [] { return ISOAlertView("800", "400"); }},
      {"alert-aperture", [] { return ApertureAlertView("f/4", "f/8"); }},
      {"alert-shutter", [] { return ShutterAlertView("1/60", "1/125"); }},
      {"alert-unreadable", [] { return FormatAlertView(std::string("a\nb\0\"\xff\u202E📷", 13)); }},
      {"settings-checking",
       [] {
         CameraWatchWorld world;
         return AlerteSettingsView(world.start()).describe();
       }},
      {"settings-capture-one-missing", [] { return settingsAfterCheck(std::nullopt); }},
      {"settings-needs-permission", [] { return settingsAfterCheck(error(-1712)); }},
      {"settings-permission-denied", [] { return settingsAfterCheck(error(-1743)); }},
      {"settings-window-requesting", windowWhileRequesting},
      {"settings-everything-off", settingsWithEverythingOff},
      {"settings-watching", [] { return settingsAfterRound(kFullReply); }},
      {"settings-alerts", settingsWithAlerts},
      {"settings-not-running", [] { return settingsAfterRound("NOT_RUNNING"); }},
      {"settings-no-camera", [] { return settingsAfterRound("NO_CAMERA"); }},
      {"settings-no-document", [] { return settingsAfterRound("NO_DOCUMENT"); }},
      {"settings-camera-off", [] { return settingsAfterRound("CAMERA_OFF"); }},
      {"settings-error", [] { return settingsAfterRound("ERROR"); }},
  };
}

class GoldenViewTest : public testing::TestWithParam<GoldenView> {};

/// With MORLA_UPDATE_GOLDEN=1 the files are written instead; the test then fails, so that it cannot be left on.
TEST_P(GoldenViewTest, IsDescribedAsItsFileSays) {
  auto const path = goldenFolder() / (GetParam().name + ".txt");
  auto const described = dump(GetParam().describe());
  if (std::getenv("MORLA_UPDATE_GOLDEN") != nullptr) {
    std::ofstream(path) << described;
    FAIL() << "wrote " << path;
  }
  std::ifstream file(path);
  ASSERT_TRUE(file) << path << " is missing";
  std::string const expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_EQ(described, expected);
}

INSTANTIATE_TEST_SUITE_P(Views, GoldenViewTest, testing::ValuesIn(goldenViews()), [](auto const& row) {
  std::string name = row.param.name;
  for (auto& c : name) c = c == '-' ? '_' : c;
  return name;
});

TEST(GoldenFiles, AreNoneTooMany) {
  std::set<std::string> named;
  for (auto const& view : goldenViews()) named.insert(view.name + ".txt");
  std::set<std::string> present;
  for (auto const& entry : std::filesystem::directory_iterator(goldenFolder())) {
    present.insert(entry.path().filename().string());
  }
  EXPECT_EQ(present, named);
}

}  // namespace
}  // namespace morla::view
