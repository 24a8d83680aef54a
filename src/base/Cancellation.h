#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "base/ObserverList.h"

namespace morla {

/// Asks work to end. A pending sleep ends at once; everything else looks at the token where its behaviour says so.
/// Main thread. Copies share one state.
class CancellationToken {
 public:
  [[nodiscard]] bool isCancelled() const { return state_->isCancelled; }
  /// Calls `observer` once when the token is cancelled; not at all when it already is.
  Subscription onCancel(std::function<void()> observer) { return state_->observers.add(std::move(observer)); }

 private:
  friend class CancellationSource;
  struct State {
    bool isCancelled = false;
    ObserverList<> observers;
  };
  explicit CancellationToken(std::shared_ptr<State> state) : state_(std::move(state)) {}
  std::shared_ptr<State> state_;
};

/// The side that cancels. Going out of scope cancels nothing.
class CancellationSource {
 public:
  [[nodiscard]] CancellationToken token() const { return CancellationToken(state_); }
  void cancel() {
    if (std::exchange(state_->isCancelled, true)) return;
    auto const state = state_;
    state->observers.call();
  }

 private:
  std::shared_ptr<CancellationToken::State> state_ = std::make_shared<CancellationToken::State>();
};

}  // namespace morla
