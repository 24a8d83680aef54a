#pragma once

#include <functional>

#include "base/Geometry.h"
#include "platform/linux/ui/PanelServices.h"
#include "platform/linux/ui/PanelWindow.h"
#include "view/Drawing.h"

namespace morla::linux {

/// A status item on a desktop without a tray: a small window of our own in the top right corner of the first screen.
class StatusStandIn {
 public:
  StatusStandIn(PanelServices const& services, double width, std::function<void()> clicked);
  ~StatusStandIn();
  StatusStandIn(StatusStandIn const&) = delete;
  StatusStandIn& operator=(StatusStandIn const&) = delete;

  void setImage(view::Drawing const& image);
  [[nodiscard]] GlobalRect frame() const { return frame_; }

 private:
  struct NeverKey : view::PanelBehaviour {
    [[nodiscard]] bool canBecomeKey() const override { return false; }
    [[nodiscard]] bool canBecomeMain() const override { return false; }
  };

  void place();

  PanelServices services_;
  double width_;
  GlobalRect frame_;
  NeverKey behaviour_;
  PanelWindow window_;
  Subscription screensDidChange_;
};

}  // namespace morla::linux
