#pragma once

#include <chrono>

#include "base/MainLoop.h"

namespace morla::macos {

/// The main dispatch queue, which the application's run loop serves in all of its modes, also while a menu is open.
/// It is not served inside one of its own blocks: whatever runs a loop of its own (a menu, a modal alert) must not be
/// started from posted work, but through the run loop.
class MainQueueLoop final : public MainLoop {
 public:
  void post(std::function<void()> work) override;
  Subscription after(Duration delay, std::function<void()> work) override;
  Subscription every(Duration interval, std::function<void()> work) override;
  [[nodiscard]] TimePoint now() const override;

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace morla::macos
