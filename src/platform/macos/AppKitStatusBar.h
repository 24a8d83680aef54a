#pragma once

#include "platform/StatusItem.h"

namespace morla::macos {

class AppKitStatusBar final : public platform::StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<platform::StatusItem> makeStatusItem(double length) override;
};

}  // namespace morla::macos
