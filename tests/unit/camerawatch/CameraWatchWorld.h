#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "camerawatch/FormatMonitor.h"
#include "platform/fake/FakePlatform.h"

namespace morla::camerawatch {

using namespace std::chrono_literals;

inline constexpr char kCaptureOneId[] = "com.captureone.captureone16";
/// Eight fields, as the status script sends them for a camera that is on.
inline constexpr char kFullReply[] = "RAW||400||f/8||1/125||100|200|400||f/4|f/8||1/60|1/125||Camera A";

inline platform::RunningApplication captureOne() {
  return {4711, "Capture One", kCaptureOneId};
}

/// The camera watch in a world where Capture One runs and nothing has been asked yet.
struct CameraWatchWorld {
  explicit CameraWatchWorld(bool isEnabled = false) {
    if (isEnabled) fake.defaults.values["formatMonitorEnabled"] = true;
    fake.workspace.running = {captureOne()};
  }

  fake::FakePlatform fake;
  /// Made by `start`, after the test has prepared the defaults.
  std::unique_ptr<FormatMonitor> monitor;

  FormatMonitor& start() {
    monitor = std::make_unique<FormatMonitor>(FormatMonitor::Roles{
        fake.loop, fake.background, fake.scripts, fake.workspace, fake.files, fake.defaults, fake.panels});
    return *monitor;
  }

  /// As above, with the permission given: the probe has answered.
  FormatMonitor& startReady() {
    start();
    fake.scripts.answersText("OK");
    detach(monitor->checkAndStartIfNeeded());
    fake.loop.advance(0s);
    return *monitor;
  }

  /// How many status scripts have been run.
  [[nodiscard]] long statusScripts() const {
    return std::ranges::count_if(fake.scripts.sources, [](std::string const& source) {
      return source.find("count of documents") != std::string::npos;
    });
  }

  /// How many alerts are on the screen, by their flags, which are checked against their panels.
  [[nodiscard]] int alertsShowing() const {
    struct Kind {
      char const* panel;
      bool isShowing;
    };
    int count = 0;
    for (auto const& [name, isShowing] :
         {Kind{"formatAlert", monitor->isAlertShowing().get()}, Kind{"isoAlert", monitor->isIsoAlertShowing().get()},
          Kind{"apertureAlert", monitor->isApertureAlertShowing().get()},
          Kind{"shutterAlert", monitor->isShutterAlertShowing().get()}}) {
      auto const* panel = fake.panels.find(name);
      EXPECT_EQ(isShowing, panel != nullptr && panel->isVisible()) << name;
      if (isShowing) ++count;
    }
    return count;
  }

  /// Raises the format's alert as a round does, for a test that watches what takes it away.
  void raiseAlert() {
    monitor->showFormatAlert("JPEG");
    ASSERT_EQ(alertsShowing(), 1);
  }

  /// Runs one round with this reply.
  void round(std::string reply) {
    fake.scripts.answersText(std::move(reply));
    detach(monitor->checkCaptureFormat());
    fake.loop.advance(0s);
  }
};

}  // namespace morla::camerawatch
