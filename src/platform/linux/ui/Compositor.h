#pragma once

#include "base/ObserverList.h"
#include "platform/linux/ui/XServer.h"

namespace morla::linux {

/// Whether somebody blends windows with what is behind them; comes and goes while we run. Main thread.
class Compositor {
 public:
  explicit Compositor(XServer& server);

  [[nodiscard]] bool isRunning() const { return isRunning_; }
  [[nodiscard]] Subscription onDidChange(std::function<void()> observer) { return didChange_.add(std::move(observer)); }

 private:
  XServer& server_;
  ObserverList<> didChange_;
  Subscription ownerDidChange_;
  bool isRunning_;
};

}  // namespace morla::linux
