#include "platform/fake/FakeMainLoop.h"

#include <algorithm>
#include <utility>

#include "base/MainThread.h"

namespace morla::fake {

void FakeMainLoop::post(std::function<void()> work) {
  std::scoped_lock const lock(postedGuard_);
  if (!hasEnded_) posted_.push_back(std::move(work));
}

Subscription FakeMainLoop::schedule(Duration delay, std::function<void()> work) {
  assertIsMainThread();
  if (hasEnded_) return {};
  TimerKey const key{(now_ + std::max(delay, Duration::zero())).sinceStart, nextTimer_++};
  timers_.emplace(key, std::move(work));
  return Subscription([key, self = std::weak_ptr(self_)] {
    auto const loop = self.lock();
    if (loop == nullptr) return;
    // Taken out before it is destroyed: what it holds may end further timers.
    auto const node = (*loop)->timers_.extract(key);
  });
}

Subscription FakeMainLoop::after(Duration delay, std::function<void()> work) {
  return schedule(delay, std::move(work));
}

Subscription FakeMainLoop::every(Duration interval, std::function<void()> work) {
  struct Repetition {
    FakeMainLoop& loop;
    Duration interval;
    std::function<void()> work;
    Subscription next;

    static void arm(std::shared_ptr<Repetition> const& repetition) {
      repetition->next = repetition->loop.schedule(repetition->interval, [weak = std::weak_ptr(repetition)] {
        auto const alive = weak.lock();
        if (alive == nullptr) return;
        arm(alive);
        alive->work();
      });
    }
  };
  auto repetition = std::make_shared<Repetition>(Repetition{*this, interval, std::move(work), {}});
  Repetition::arm(repetition);
  return Subscription([repetition]() mutable { repetition.reset(); });
}

void FakeMainLoop::runReady() {
  assertIsMainThread();
  for (;;) {
    std::function<void()> work;
    {
      std::scoped_lock const lock(postedGuard_);
      if (posted_.empty()) return;
      work = std::move(posted_.front());
      posted_.pop_front();
    }
    work();
  }
}

void FakeMainLoop::advance(Duration by) {
  auto const end = now_ + by;
  runReady();
  while (!timers_.empty() && timers_.begin()->first.first <= end.sinceStart) {
    auto node = timers_.extract(timers_.begin());
    now_.sinceStart = std::max(now_.sinceStart, node.key().first);
    node.mapped()();
    runReady();
  }
  now_ = end;
}

void FakeMainLoop::end() {
  assertIsMainThread();
  std::deque<std::function<void()>> posted;
  {
    std::scoped_lock const lock(postedGuard_);
    hasEnded_ = true;
    posted.swap(posted_);
  }
  // Taken out before they are destroyed: what they hold may end further timers.
  auto const timers = std::exchange(timers_, {});
}

void FakeBackgroundWork::run(QualityOfService quality, std::function<void()> work) {
  ++startedJobs_;
  lastQuality_ = quality;
  auto timer = std::make_shared<Subscription>();
  timers_.push_back(timer);
  *timer = loop_.after(duration_, [this, work = std::move(work)] {
    ++finishedJobs_;
    work();
  });
}

}  // namespace morla::fake
