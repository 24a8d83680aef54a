#pragma once

#include <optional>

#include "platform/KeyEvents.h"

@class NSEvent;

namespace morla::macos {

class AppKitKeyMonitors final : public platform::KeyMonitors {
 public:
  [[nodiscard]] Subscription addLocalMonitor(platform::EventMask mask, LocalHandler handler) override;
  [[nodiscard]] Subscription addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) override;
};

/// Nothing when `event` is no key event.
[[nodiscard]] std::optional<platform::KeyEvent> keyEvent(NSEvent* event);

}  // namespace morla::macos
