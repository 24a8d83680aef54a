#pragma once

#include "base/BackgroundWork.h"

namespace morla::macos {

/// The global concurrent queues. A job that blocks makes the system start another thread for the next one, up to 64 for
/// each quality of service.
class GlobalQueues final : public BackgroundWork {
 public:
  void run(QualityOfService quality, std::function<void()> work) override;
};

}  // namespace morla::macos
