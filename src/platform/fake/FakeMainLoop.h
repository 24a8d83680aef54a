#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "base/BackgroundWork.h"
#include "base/MainLoop.h"

namespace morla::fake {

/// A loop whose clock moves only when a test moves it.
class FakeMainLoop : public MainLoop {
 public:
  void post(std::function<void()> work) override;
  Subscription after(Duration delay, std::function<void()> work) override;
  Subscription every(Duration interval, std::function<void()> work) override;
  [[nodiscard]] TimePoint now() const override { return now_; }

  /// Runs what is posted, and what that posts, without any time passing.
  void runReady();
  /// Lets `by` pass: everything that becomes due runs at its own time, in order; what is posted runs in between.
  void advance(Duration by);
  /// Lets `by` pass without a turn, as when the main thread is busy: what becomes due meanwhile runs late.
  void stall(Duration by) { now_ = now_ + by; }
  /// The end of the program: destroys unrun what waits, and whatever comes later.
  void end();

  [[nodiscard]] std::size_t pendingTimers() const { return timers_.size(); }

 private:
  /// Due time, then order of making.
  using TimerKey = std::pair<Duration, std::uint64_t>;

  Subscription schedule(Duration delay, std::function<void()> work);

  TimePoint now_;
  std::uint64_t nextTimer_ = 0;
  std::map<TimerKey, std::function<void()>> timers_;
  /// Timers are removed by their subscriptions, which may outlive the loop.
  std::shared_ptr<FakeMainLoop*> self_ = std::make_shared<FakeMainLoop*>(this);
  std::mutex postedGuard_;  ///< of the two below
  std::deque<std::function<void()>> posted_;
  bool hasEnded_ = false;
};

/// Runs each job on the main thread at the end of the virtual time that it takes.
class FakeBackgroundWork : public BackgroundWork {
 public:
  explicit FakeBackgroundWork(FakeMainLoop& loop) : loop_(loop) {}

  void run(QualityOfService quality, std::function<void()> work) override;

  /// How long each job from now on takes; no time at first.
  void takes(Duration duration) { duration_ = duration; }

  [[nodiscard]] int startedJobs() const { return startedJobs_; }
  [[nodiscard]] int finishedJobs() const { return finishedJobs_; }
  [[nodiscard]] QualityOfService lastQuality() const { return lastQuality_; }

 private:
  FakeMainLoop& loop_;
  Duration duration_{};
  int startedJobs_ = 0;
  int finishedJobs_ = 0;
  QualityOfService lastQuality_ = QualityOfService::utility;
  std::vector<std::shared_ptr<Subscription>> timers_;
};

}  // namespace morla::fake
