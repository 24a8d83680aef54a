#include "platform/linux/ui/QtMainLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTimerEvent>
#include <algorithm>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "base/MainThread.h"

namespace morla::linux {
namespace {

QEvent::Type wakeType() {
  static auto const type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

/// Far beyond every delay of the program, and still safe to add to a point in time.
constexpr Duration kLongestDelay = std::chrono::hours(24 * 365 * 50);
constexpr Duration kShortestInterval = std::chrono::milliseconds(1);

}  // namespace

/// Lives on the main thread, where Qt delivers what it is sent.
class QtMainLoop::Receiver : public QObject {
 public:
  struct Timer {
    std::function<void()> work;
    TimePoint due;
    std::optional<Duration> interval;
    int id = 0;
  };

  explicit Receiver(QtMainLoop const& loop) : loop_(loop) {}

  void post(std::function<void()> work) {
    bool wake = false;
    {
      std::lock_guard const lock(mutex_);
      if (hasEnded_) return;
      posted_.push_back({nextNumber_++, std::move(work)});
      wake = !std::exchange(isWakePending_, true);
    }
    if (wake) QCoreApplication::postEvent(this, new QEvent(wakeType()));
  }

  Subscription add(Duration delay, std::optional<Duration> interval, std::function<void()> work) {
    assertIsMainThread();
    if (hasEnded_) return {};
    delay = std::clamp(delay, Duration::zero(), kLongestDelay);
    auto timer = std::make_shared<Timer>(Timer{std::move(work), loop_.now() + delay, interval});
    arm(timer);
    return Subscription([timer = std::weak_ptr(timer), receiver = std::weak_ptr(self_)] {
      auto const live = timer.lock();
      auto const owner = receiver.lock();
      if (live != nullptr && owner != nullptr) (*owner)->disarm(*live);
    });
  }

  void end() {
    std::deque<Posted> posted;
    {
      std::lock_guard const lock(mutex_);
      hasEnded_ = true;
      posted.swap(posted_);
    }
    auto const timers = std::exchange(timers_, {});
    for (auto const& [id, timer] : timers) killTimer(id);
    // What they hold is destroyed here, with nothing of ours locked or half changed.
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != wakeType()) return QObject::event(event);
    runPosted();
    return true;
  }

  void timerEvent(QTimerEvent* event) override {
    auto const found = timers_.find(event->timerId());
    if (found == timers_.end()) return;
    auto const timer = found->second;
    disarm(*timer);
    auto const now = loop_.now();
    if (now < timer->due) {
      // Qt counts in milliseconds of its own clock and may come a little early.
      arm(timer);
      return;
    }
    if (timer->interval.has_value()) {
      auto const interval = *timer->interval;
      auto const turns = (now - timer->due) / interval + 1;
      timer->due = timer->due + turns * interval;
      arm(timer);
    }
    timer->work();
  }

 private:
  struct Posted {
    std::uint64_t number;
    std::function<void()> work;
  };

  /// Runs what was posted before this turn, and leaves what is posted meanwhile to the next.
  void runPosted() {
    std::unique_lock lock(mutex_);
    isWakePending_ = false;
    auto const end = nextNumber_;
    while (!posted_.empty() && posted_.front().number < end) {
      auto work = std::move(posted_.front().work);
      posted_.pop_front();
      // `work` may run an event loop of its own, which must get the rest.
      bool const wake = !posted_.empty() && !std::exchange(isWakePending_, true);
      lock.unlock();
      if (wake) QCoreApplication::postEvent(this, new QEvent(wakeType()));
      work();
      work = nullptr;
      lock.lock();
    }
  }

  void arm(std::shared_ptr<Timer> const& timer) {
    auto const remaining = std::max(timer->due - loop_.now(), Duration::zero());
    auto const milliseconds = std::chrono::ceil<std::chrono::milliseconds>(remaining).count();
    auto const longest = std::int64_t{std::numeric_limits<int>::max()};
    timer->id = startTimer(static_cast<int>(std::min(std::int64_t{milliseconds}, longest)), Qt::PreciseTimer);
    timers_[timer->id] = timer;
  }

  void disarm(Timer& timer) {
    auto const found = timers_.find(timer.id);
    // Qt gives the number of a timer that has ended to the next one.
    if (found == timers_.end() || found->second.get() != &timer) return;
    timers_.erase(found);
    killTimer(timer.id);
  }

  QtMainLoop const& loop_;
  std::map<int, std::shared_ptr<Timer>> timers_;

  std::mutex mutex_;  // guards what follows; hasEnded_ is written on the main thread only
  std::deque<Posted> posted_;
  std::uint64_t nextNumber_ = 0;
  bool isWakePending_ = false;
  bool hasEnded_ = false;

  /// What subscriptions hold weakly: they may outlive the loop.
  std::shared_ptr<Receiver*> self_ = std::make_shared<Receiver*>(this);
};

QtMainLoop::QtMainLoop() {
  assertIsMainThread();
  receiver_ = std::make_unique<Receiver>(*this);
}

QtMainLoop::~QtMainLoop() {
  end();
}

void QtMainLoop::post(std::function<void()> work) {
  receiver_->post(std::move(work));
}

Subscription QtMainLoop::after(Duration delay, std::function<void()> work) {
  return receiver_->add(delay, std::nullopt, std::move(work));
}

Subscription QtMainLoop::every(Duration interval, std::function<void()> work) {
  interval = std::clamp(interval, kShortestInterval, kLongestDelay);
  return receiver_->add(interval, interval, std::move(work));
}

TimePoint QtMainLoop::now() const {
  return {std::chrono::steady_clock::now() - start_};
}

void QtMainLoop::end() {
  assertIsMainThread();
  receiver_->end();
}

}  // namespace morla::linux
