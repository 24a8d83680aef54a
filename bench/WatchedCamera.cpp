#include "WatchedCamera.h"

#include <cstdlib>
#include <iostream>

namespace morla::bench {
namespace {

std::string reply(std::string const& iso) {
  return "JPEG||" + iso +
         "||f/8||1/125||50|100|200|400|800|1600|3200|6400||f/2.8|f/4|f/5.6|f/8|f/11|f/16|f/22"
         "||1/1000|1/500|1/250|1/125|1/60|1/30|1/15|1/8|1/4|1/2|1\"|2\"||MX-1 Studio";
}

/// Every switch on, and nothing as it is expected.
fake::FakePlatform& prepared(fake::FakePlatform& platform) {
  for (auto const* flag : {"formatMonitorEnabled", "isoAlertEnabled", "apertureAlertEnabled", "shutterAlertEnabled"}) {
    platform.defaults.values[flag] = true;
  }
  platform.defaults.values["isoExpectedValue"] = std::string("400");
  platform.defaults.values["apertureExpectedValue"] = std::string("f/4");
  platform.defaults.values["shutterExpectedValue"] = std::string("1/60");
  platform.workspace.running = {{4711, "Capture One", "com.captureone.captureone16"}};
  platform.scripts.answersText("OK");
  return platform;
}

camerawatch::FormatMonitor::Roles rolesOf(fake::FakePlatform& p) {
  return {p.loop, p.background, p.scripts, p.workspace, p.files, p.defaults, p.panels};
}

}  // namespace

WatchedCamera::WatchedCamera() : monitor_(rolesOf(prepared(platform_))) {
  detach(monitor_.checkPermissionState());
  platform_.loop.advance(Duration::zero());
  round("100");
  if (monitor_.cameraName().get() == "MX-1 Studio" && monitor_.isShutterAlertShowing().get()) return;
  std::cerr << "the watch does not work\n";
  std::exit(1);
}

void WatchedCamera::round(std::string const& iso) {
  platform_.scripts.answersText(reply(iso));
  detach(monitor_.checkCaptureFormat());
  platform_.loop.advance(Duration::zero());
}

}  // namespace morla::bench
