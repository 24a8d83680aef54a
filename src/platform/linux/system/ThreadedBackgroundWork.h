#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

#include "base/BackgroundWork.h"
#include "base/MainLoop.h"

namespace morla::linux {

/// Runs every job at once on a thread of its own: an idle one, else a new one. There is no upper bound but the
/// system's; a job that finds it reached is taken by the next thread that comes free, and until then the loop tries ten
/// times a second to start one. A thread that was idle for `idleTime` ends. Jobs of the utility class run at a lower
/// priority, on threads apart: only a privileged process may raise a thread's priority again.
class ThreadedBackgroundWork final : public BackgroundWork {
 public:
  /// Starts a thread of its own for the function; false when the system refuses one.
  using StartThread = std::function<bool(std::function<void()>)>;

  static constexpr std::chrono::seconds kIdleTime{10};
  static constexpr std::chrono::milliseconds kRetryInterval{100};

  explicit ThreadedBackgroundWork(MainLoop& loop, std::chrono::milliseconds idleTime = kIdleTime,
                                  StartThread startThread = &startDetachedThread);
  /// Main thread. Waits for the jobs that run; one that has not begun is destroyed here without being run.
  ~ThreadedBackgroundWork() override;
  ThreadedBackgroundWork(ThreadedBackgroundWork const&) = delete;
  ThreadedBackgroundWork& operator=(ThreadedBackgroundWork const&) = delete;

  void run(QualityOfService quality, std::function<void()> work) override;

  /// Threads alive, idle ones included. Any thread.
  [[nodiscard]] std::size_t threadCount() const;

 private:
  class Pool;

  static bool startDetachedThread(std::function<void()> body);
  void startMissingThreads();

  MainLoop& loop_;
  std::shared_ptr<Pool> userInitiated_;
  std::shared_ptr<Pool> utility_;
  bool isShort_ = false;  ///< of a thread: told once until there are enough again
  Subscription retry_;
};

}  // namespace morla::linux
