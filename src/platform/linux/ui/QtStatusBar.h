#pragma once

#include <memory>

#include "platform/Events.h"
#include "platform/StatusItem.h"
#include "platform/linux/ui/PanelServices.h"
#include "platform/linux/ui/XServer.h"

namespace morla::linux {

/// Status items live in the desktop's tray, follow it when it starts later or again, and have a window of their own
/// while there is none.
class QtStatusBar : public platform::StatusBar {
 public:
  QtStatusBar(PanelServices const& services, XServer& server, platform::Pointer const& pointer)
      : services_(services), server_(server), pointer_(pointer) {}

  [[nodiscard]] std::unique_ptr<platform::StatusItem> makeStatusItem(double length) override;

 private:
  PanelServices services_;
  XServer& server_;
  platform::Pointer const& pointer_;
};

}  // namespace morla::linux
