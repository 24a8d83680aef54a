#pragma once

#include <string>
#include <vector>

#include "camerawatch/AlerteSettingsView.h"
#include "camerawatch/FormatMonitor.h"
#include "platform/fake/FakePlatform.h"
#include "view/View.h"

namespace morla::bench {

/// The camera watch, on and allowed, with every kind of alert; the system around it is a fake one that does nothing.
class WatchedCamera {
 public:
  WatchedCamera();

  /// A round of the poll in which the camera says that it is set to this ISO. Keeps a note of every script, as the fake
  /// system does.
  void round(std::string const& iso);

  [[nodiscard]] fake::FakePlatform& platform() { return platform_; }
  [[nodiscard]] camerawatch::FormatMonitor& monitor() { return monitor_; }
  [[nodiscard]] view::Node describeSettings() { return settings_.describe(); }

 private:
  fake::FakePlatform platform_;
  camerawatch::FormatMonitor monitor_;
  camerawatch::AlerteSettingsView settings_{monitor_};
};

}  // namespace morla::bench
