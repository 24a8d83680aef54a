#pragma once

#include "base/Lifetime.h"
#include "base/Published.h"
#include "base/Task.h"
#include "camerawatch/FormatMonitor.h"
#include "view/LiveView.h"
#include "view/View.h"

namespace morla::camerawatch {

/// Where the user switches the watch and its alerts, says what is expected of the camera, and sees what the watch is
/// doing; before that, the way to the permission. As wide as it is allowed to be. Made anew whenever its window opens.
/// Main thread.
class AlerteSettingsView {
 public:
  /// `monitor` outlives this object and what it describes.
  explicit AlerteSettingsView(FormatMonitor& monitor) : monitor_(monitor) {}

  [[nodiscard]] view::Node describe();
  /// Lets `live` follow every value that `describe` reads.
  void isReadBy(view::LiveView& live) const;

 private:
  [[nodiscard]] view::Node permissionRequest();
  [[nodiscard]] Task<> requestAndStart();

  FormatMonitor& monitor_;
  /// While the system asks the user; the button that asked is then disabled.
  Published<bool> isRequesting_{"AlerteSettingsView.isRequesting"};
  Lifetime life_;
};

}  // namespace morla::camerawatch
