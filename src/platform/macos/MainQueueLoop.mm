#include "platform/macos/MainQueueLoop.h"

#include <algorithm>
#include <utility>

#include "base/MainThread.h"
#include "platform/macos/Dispatch.h"

namespace morla::macos {
namespace {

/// `interval` in nanoseconds, or DISPATCH_TIME_FOREVER for a timer that fires once. Turns that a busy main thread
/// missed are merged into one. Once cancelled on the main thread, the handler does not run again: both are on the main
/// queue.
Subscription startTimer(Duration delay, std::uint64_t interval, std::function<void()> work) {
  assertIsMainThread();
  dispatch_source_t const timer = dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, dispatch_get_main_queue());
  auto const first = std::max(delay, Duration::zero());
  dispatch_source_set_timer(timer, dispatch_time(DISPATCH_TIME_NOW, first.count()), interval, 0);
  dispatch_source_set_event_handler(timer, ^{
    work();
  });
  dispatch_activate(timer);
  return Subscription([timer] { dispatch_source_cancel(timer); });
}

}  // namespace

void MainQueueLoop::post(std::function<void()> work) {
  dispatch(dispatch_get_main_queue(), std::move(work));
}

Subscription MainQueueLoop::after(Duration delay, std::function<void()> work) {
  return startTimer(delay, DISPATCH_TIME_FOREVER, std::move(work));
}

Subscription MainQueueLoop::every(Duration interval, std::function<void()> work) {
  return startTimer(interval, static_cast<std::uint64_t>(interval.count()), std::move(work));
}

TimePoint MainQueueLoop::now() const {
  return {std::chrono::steady_clock::now() - start_};
}

}  // namespace morla::macos
