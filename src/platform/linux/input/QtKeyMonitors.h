#pragma once

#include <memory>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/KeyEvents.h"
#include "platform/linux/input/RawKeys.h"

class QEvent;

namespace morla::linux {

/// Keys for our own windows are seen where Qt hands them to the window, all others where the server tells of them.
/// While there is no monitor nothing is asked of the server. Main thread.
class QtKeyMonitors final : public platform::KeyMonitors {
 public:
  explicit QtKeyMonitors(MainLoop& loop);
  ~QtKeyMonitors() override;

  [[nodiscard]] Subscription addLocalMonitor(platform::EventMask mask, LocalHandler handler) override;
  [[nodiscard]] Subscription addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) override;

 private:
  class Filter;

  /// Starts and stops watching with the first and after the last monitor.
  void update();
  /// What a subscription does at its end, which may be within a monitor.
  void updateLater();
  /// True when a monitor consumes it.
  [[nodiscard]] bool look(QEvent const& event);

  MainLoop& loop_;
  ObserverList<platform::KeyEvent const&, platform::MonitorDecision&> locals_;
  ObserverList<platform::KeyEvent const&> globals_;
  std::unique_ptr<RawKeys> keys_;
  std::unique_ptr<Filter> filter_;
  Lifetime life_;
};

}  // namespace morla::linux
