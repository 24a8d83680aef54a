#pragma once

#include <chrono>
#include <memory>

#include "base/MainLoop.h"

namespace morla::linux {

/// The main loop on Qt's event loop, which sleeps whenever there is nothing to do. Made on the main thread; callbacks
/// also run in a loop nested inside another callback, so that a modal dialogue stops nothing.
class QtMainLoop : public MainLoop {
 public:
  QtMainLoop();
  ~QtMainLoop() override;

  void post(std::function<void()> work) override;
  Subscription after(Duration delay, std::function<void()> work) override;
  /// An interval below one millisecond counts as one millisecond.
  Subscription every(Duration interval, std::function<void()> work) override;
  [[nodiscard]] TimePoint now() const override;

  /// Main thread, once Qt's event loop has returned: everything that waits is destroyed without being run.
  void end();

 private:
  class Receiver;

  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::unique_ptr<Receiver> receiver_;
};

}  // namespace morla::linux
