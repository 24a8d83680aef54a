#pragma once

#include "platform/KeyEvents.h"

namespace morla::macos {

/// Event taps at the head of the login session's key events.
class SessionEventTaps final : public platform::EventTaps {
 public:
  [[nodiscard]] std::unique_ptr<platform::EventTap> makeTap(platform::EventTap::Callback& callback,
                                                            platform::WantedKeys wanted) override;
};

}  // namespace morla::macos
