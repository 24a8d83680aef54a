#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "base/Published.h"
#include "base/Subscription.h"
#include "platform/Panel.h"
#include "platform/UserDefaults.h"
#include "view/View.h"

namespace morla::camerawatch {

/// A red banner's panel and what remembers where the user puts it.
struct AlertWindow {
  std::unique_ptr<platform::Panel> panel;
  Subscription moves;
};

/// Makes the panel of an alert, hidden, where the user has put it the last time, or else in the middle: above every
/// other window, on every space, never with the focus, and movable. From then on each move is stored under
/// `positionKey` followed by X and Y. `defaults` outlives what is returned.
[[nodiscard]] AlertWindow createAlertWindow(platform::PanelHost& panels, platform::UserDefaults& defaults,
                                            std::string_view positionKey);

/// One kind of alert: a banner that is shown while a mismatch lasts. Main thread.
class Alert {
 public:
  struct Roles {
    platform::PanelHost& panels;
    platform::UserDefaults& defaults;
  };

  /// Both texts are literals: how the trace calls the flag, and where the place is stored.
  Alert(Roles roles, std::string_view flagName, std::string_view positionKey)
      : roles_(roles), positionKey_(positionKey), isShowing_(flagName) {}

  [[nodiscard]] Published<bool> const& isShowing() const { return isShowing_; }

  /// Brings the banner to the screen; while it is showing, only replaces what it says. The panel is made when it is
  /// first needed, and kept.
  void show(view::Node banner);
  /// Hides the banner. It has no memory of that: the next `show` brings it back to the same place.
  void dismiss();

 private:
  Roles roles_;
  std::string_view positionKey_;
  Published<bool> isShowing_;
  std::optional<AlertWindow> window_;
};

}  // namespace morla::camerawatch
