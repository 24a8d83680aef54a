#pragma once

#include <functional>
#include <utility>

#include "base/ObserverList.h"

namespace morla::captureone {

/// The one place that tells of any change of the simulated application: after the change, once per change, whatever
/// part of the model it was in. Events are told apart: a script sends many a second, and all they change is their
/// count. Main thread.
class Changes {
 public:
  Changes() = default;
  Changes(Changes const&) = delete;
  Changes& operator=(Changes const&) = delete;

  Subscription observe(std::function<void()> observer) { return observers_.add(std::move(observer)); }

  void announce() {
    if (held_ > 0) {
      isDue_ = true;
      return;
    }
    observers_.call();
  }

  Subscription observeEvents(std::function<void()> observer) { return events_.add(std::move(observer)); }
  void announceEvent() { events_.call(); }

  /// While one lives, changes are not told; when the last one ends they are told as one.
  class Batch {
   public:
    explicit Batch(Changes& changes) : changes_(changes) { ++changes_.held_; }
    Batch(Batch const&) = delete;
    Batch& operator=(Batch const&) = delete;
    ~Batch() {
      if (--changes_.held_ == 0 && std::exchange(changes_.isDue_, false)) changes_.observers_.call();
    }

   private:
    Changes& changes_;
  };

 private:
  ObserverList<> observers_;
  ObserverList<> events_;
  int held_ = 0;
  bool isDue_ = false;
};

}  // namespace morla::captureone
