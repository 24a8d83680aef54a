#pragma once

#include <map>
#include <vector>

#include "base/Subscription.h"
#include "platform/linux/ui/Stacking.h"
#include "platform/linux/ui/XServer.h"

namespace morla::linux {

/// Keeps our panels, of which the window manager knows nothing, where their levels belong: some window managers put a
/// window that they raise above everything. Looks only when the server says that something changed while a panel is
/// shown, and moves panels only when they stand wrong. Main thread.
class PanelStack {
 public:
  explicit PanelStack(XServer& server);

  /// After the panel was mapped and raised.
  void didShow(XWindowId panel, int level);
  void didHide(XWindowId panel);

 private:
  void restack();
  [[nodiscard]] bool hasNonFloating() const;
  /// From the top down to where nothing can be wrong any more, returned bottom to top.
  [[nodiscard]] std::vector<StackedWindow> relevantStack();
  [[nodiscard]] XWindowId raisedOrActivated(std::vector<StackedWindow> const& bottomToTop);

  XServer& server_;
  std::map<XWindowId, int> levels_;
  XWindowId topManaged_ = 0;
  XWindowId active_ = 0;
  Subscription desktopDidChange_;
};

}  // namespace morla::linux
