#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/KeyEvents.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

/// A keyboard whose keys a test presses. Every tap sees every event, the last made first, as on macOS.
class FakeEventTaps : public platform::EventTaps {
 public:
  explicit FakeEventTaps(Journal& journal) : journal_(journal) {}
  std::unique_ptr<platform::EventTap> makeTap(platform::EventTap::Callback& callback,
                                              platform::WantedKeys wanted) override;

  /// Sends an event past the enabled taps: swallowed as soon as one says so.
  platform::TapDecision send(platform::KeyEvent const& event);
  /// As the system does with taps that are too slow.
  void disableAll();

  [[nodiscard]] std::size_t count() const { return taps_.size(); }
  /// The hint of the tap that was made last.
  [[nodiscard]] platform::WantedKeys const& lastWanted() const { return lastWanted_; }
  bool isPermitted = true;

 private:
  class Tap;
  Journal& journal_;
  std::vector<Tap*> taps_;
  platform::WantedKeys lastWanted_;
};

/// Monitors that a test's keys go past.
class FakeKeyMonitors : public platform::KeyMonitors {
 public:
  Subscription addLocalMonitor(platform::EventMask mask, LocalHandler handler) override;
  Subscription addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) override;

  /// A key typed into a window of this program.
  platform::MonitorDecision typeHere(platform::KeyEvent const& event);
  /// A key typed into a window of another one.
  void typeElsewhere(platform::KeyEvent const& event);

  [[nodiscard]] std::size_t localCount() const { return locals_.size(); }
  [[nodiscard]] std::size_t globalCount() const { return globals_.size(); }

 private:
  template <typename Handler>
  struct Monitor {
    platform::EventMask mask;
    Handler handler;
  };
  std::vector<std::shared_ptr<Monitor<LocalHandler>>> locals_;
  std::vector<std::shared_ptr<Monitor<GlobalHandler>>> globals_;
};

}  // namespace morla::fake
