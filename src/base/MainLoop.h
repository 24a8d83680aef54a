#pragma once

#include <chrono>
#include <functional>

#include "base/Subscription.h"

namespace morla {

using Duration = std::chrono::nanoseconds;

/// A point on a clock that only goes forward; says nothing about the time of day.
struct TimePoint {
  Duration sinceStart{};
  friend auto operator<=>(TimePoint const&, TimePoint const&) = default;
  friend TimePoint operator+(TimePoint point, Duration by) { return {point.sinceStart + by}; }
  friend Duration operator-(TimePoint a, TimePoint b) { return a.sinceStart - b.sinceStart; }
};

/// The main thread's loop, and the only clock of the program.
/// Callbacks run on the main thread, one at a time, never inside the call that scheduled them; posted ones in order.
class MainLoop {
 public:
  virtual ~MainLoop() = default;

  /// Any thread. Runs `work` on a later turn. What is posted after the loop ended is destroyed without being run.
  virtual void post(std::function<void()> work) = 0;

  /// Main thread. Runs `work` once, not before `delay` has passed, unless the subscription ends first.
  virtual Subscription after(Duration delay, std::function<void()> work) = 0;

  /// Main thread. Runs `work` every `interval` until the subscription ends; turns that were missed are not made up for.
  virtual Subscription every(Duration interval, std::function<void()> work) = 0;

  /// Any thread.
  [[nodiscard]] virtual TimePoint now() const = 0;
};

}  // namespace morla
