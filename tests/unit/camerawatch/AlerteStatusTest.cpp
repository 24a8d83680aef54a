#include "camerawatch/AlerteStatus.h"

#include <gtest/gtest.h>

#include "CameraWatchWorld.h"

namespace morla::camerawatch {
namespace {

using view::SystemColour;

/// A watch whose last round had this reply; none for no round yet.
struct StatusWorld : CameraWatchWorld {
  explicit StatusWorld(std::optional<std::string> const& reply, bool isEnabled = false) : CameraWatchWorld(isEnabled) {
    start();
    if (!reply) return;
    if (*reply == "NOT_RUNNING") fake.workspace.running.clear();
    round(*reply);
  }
};

TEST(Status, EachWordHasItsTextAndColour) {
  struct Row {
    std::optional<std::string> reply;
    std::string text;
    SystemColour colour;
  };
  for (auto const& [reply, text, colour] : {
           Row{"NOT_RUNNING", "Capture One non lancé", SystemColour::grey},
           Row{"NO_CAMERA", "Pas de caméra connectée", SystemColour::grey},
           Row{"NO_DOCUMENT", "Pas de document ouvert", SystemColour::grey},
           Row{"CAMERA_OFF", "Boîtier éteint ou déconnecté", SystemColour::orange},
           Row{"ERROR", "Erreur de communication", SystemColour::green},
           Row{std::nullopt, "Surveillance active", SystemColour::green},
           Row{kFullReply, "Surveillance active", SystemColour::green},
           Row{"something unreadable", "Surveillance active", SystemColour::green},
           Row{"no_camera", "Surveillance active", SystemColour::green},
       }) {
    StatusWorld world(reply, true);
    EXPECT_EQ(statusText(*world.monitor), text) << reply.value_or("no round yet");
    EXPECT_EQ(statusColor(*world.monitor), colour) << reply.value_or("no round yet");
  }
}

TEST(Status, AllSwitchesOffAndARealFormatIsNoAlertActivated) {
  StatusWorld world(kFullReply);
  EXPECT_EQ(statusText(*world.monitor), "Aucune alerte activée");
  EXPECT_EQ(statusColor(*world.monitor), SystemColour::green);
}

TEST(Status, AWordCountsBeforeTheSwitches) {
  StatusWorld world("NO_CAMERA");
  EXPECT_EQ(statusText(*world.monitor), "Pas de caméra connectée");
}

TEST(Status, AnySwitchAloneMakesItActive) {
  for (auto const set : {&FormatMonitor::setIsEnabled, &FormatMonitor::setIsoAlertEnabled,
                         &FormatMonitor::setApertureAlertEnabled, &FormatMonitor::setShutterAlertEnabled}) {
    StatusWorld world(std::nullopt);
    (*world.monitor.*set)(true);
    EXPECT_EQ(statusText(*world.monitor), "Surveillance active");
  }
}

TEST(Status, ShowingAlertsAreCountedInRedWhateverTheWord) {
  for (auto const* reply : {kFullReply, "CAMERA_OFF", "NO_CAMERA"}) {
    StatusWorld world(reply);
    auto& monitor = *world.monitor;
    monitor.showIsoAlert("800", "400");
    EXPECT_EQ(statusText(monitor), "1 alerte active");
    EXPECT_EQ(statusColor(monitor), SystemColour::red);
    monitor.showFormatAlert("JPEG");
    EXPECT_EQ(statusText(monitor), "2 alertes actives");
    monitor.showApertureAlert("f/4", "f/8");
    EXPECT_EQ(statusText(monitor), "3 alertes actives");
    monitor.showShutterAlert("1/60", "1/125");
    EXPECT_EQ(statusText(monitor), "4 alertes actives");
    EXPECT_EQ(statusColor(monitor), SystemColour::red);
  }
}

}  // namespace
}  // namespace morla::camerawatch
