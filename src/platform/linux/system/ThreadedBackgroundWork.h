#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

#include "base/BackgroundWork.h"

namespace morla::linux {

/// Runs every job at once on a thread of its own: an idle one, else a new one. There is no upper bound but the
/// system's; a job that finds it reached waits for the next thread that comes free. A thread that was idle for
/// `idleTime` ends. Jobs of the utility class run at a lower priority, on threads apart: only a privileged process may
/// raise a thread's priority again.
class ThreadedBackgroundWork final : public BackgroundWork {
 public:
  explicit ThreadedBackgroundWork(std::chrono::milliseconds idleTime = std::chrono::seconds(10));
  /// Main thread. Waits for the jobs that run; one that has not begun is destroyed here without being run.
  ~ThreadedBackgroundWork() override;
  ThreadedBackgroundWork(ThreadedBackgroundWork const&) = delete;
  ThreadedBackgroundWork& operator=(ThreadedBackgroundWork const&) = delete;

  void run(QualityOfService quality, std::function<void()> work) override;

  /// Threads alive, idle ones included. Any thread.
  [[nodiscard]] std::size_t threadCount() const;

 private:
  class Pool;
  std::shared_ptr<Pool> userInitiated_;
  std::shared_ptr<Pool> utility_;
};

}  // namespace morla::linux
