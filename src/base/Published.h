#pragma once

#include <string_view>
#include <utility>

#include "base/MainThread.h"
#include "base/ObserverList.h"
#include "base/Trace.h"

namespace morla {

/// A value that announces every write, equal or not. Main thread.
///
/// The announcement comes *before* the store: an observer that reads the owner still sees the old value, and views
/// redraw on the next turn of the loop. Observing replays nothing. An observer may write the same value: the inner
/// write is announced and stored at once, then the outer one goes on, so the outer value is the one that stays.
template <typename T>
class Published {
 public:
  /// `traceName` is how the trace calls this value ("Owner.property"); it must outlive the object (a literal).
  explicit Published(std::string_view traceName, T initial = T()) : traceName_(traceName), value_(std::move(initial)) {}
  Published(Published const&) = delete;
  Published& operator=(Published const&) = delete;

  [[nodiscard]] T const& get() const { return value_; }

  void set(T next) {
    assertIsMainThread();
    willChange_.call(next);
    value_ = std::move(next);
    if (auto* trace = Trace::active()) trace->published(traceName_, toJson(value_));
  }

  /// Calls `observer` with the coming value, before each store, until the subscription ends.
  Subscription willChange(std::function<void(T const&)> observer) const {
    assertIsMainThread();
    return willChange_.add(std::move(observer));
  }

 private:
  std::string_view traceName_;
  T value_;
  mutable ObserverList<T const&> willChange_;  // who watches is no part of the value
};

}  // namespace morla
