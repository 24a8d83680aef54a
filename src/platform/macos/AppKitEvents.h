#pragma once

#include "platform/Events.h"

namespace morla::macos {

class AppKitEventMonitors final : public platform::EventMonitors {
 public:
  [[nodiscard]] Subscription addLocalMonitor(platform::EventMask mask, Handler handler) override;
};

class AppKitPointer final : public platform::Pointer {
 public:
  [[nodiscard]] BottomLeftPoint location() const override;
};

}  // namespace morla::macos
