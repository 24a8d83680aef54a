#include "platform/fake/FakeKeys.h"

#include <utility>

namespace morla::fake {

class FakeEventTaps::Tap : public platform::EventTap {
 public:
  Tap(FakeEventTaps& taps, Callback& owner) : callback(owner), taps_(taps) { taps_.taps_.push_back(this); }
  ~Tap() override {
    taps_.journal_.add("eventTaps.remove");
    std::erase(taps_.taps_, this);
  }
  void enable() override {
    taps_.journal_.add("eventTap.enable");
    isEnabled = true;
  }

  Callback& callback;
  bool isEnabled = true;

 private:
  FakeEventTaps& taps_;
};

std::unique_ptr<platform::EventTap> FakeEventTaps::makeTap(platform::EventTap::Callback& callback,
                                                           platform::WantedKeys wanted) {
  journal_.add("eventTaps.makeTap");
  if (!isPermitted) return nullptr;
  lastWanted_ = std::move(wanted);
  return std::make_unique<Tap>(*this, callback);
}

platform::TapDecision FakeEventTaps::send(platform::KeyEvent const& event) {
  auto const snapshot = taps_;
  for (auto tap = snapshot.rbegin(); tap != snapshot.rend(); ++tap) {
    if (!(*tap)->isEnabled) continue;
    if ((*tap)->callback.handle(event) == platform::TapDecision::swallow) return platform::TapDecision::swallow;
  }
  return platform::TapDecision::pass;
}

void FakeEventTaps::disableAll() {
  auto const snapshot = taps_;
  for (auto* tap : snapshot) {
    tap->isEnabled = false;
    tap->callback.tapWasDisabled(*tap);
  }
}

Subscription FakeKeyMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  auto monitor = std::make_shared<Monitor<LocalHandler>>(Monitor<LocalHandler>{mask, std::move(handler)});
  locals_.push_back(monitor);
  return Subscription([this, monitor] { std::erase(locals_, monitor); });
}

Subscription FakeKeyMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  auto monitor = std::make_shared<Monitor<GlobalHandler>>(Monitor<GlobalHandler>{mask, std::move(handler)});
  globals_.push_back(monitor);
  return Subscription([this, monitor] { std::erase(globals_, monitor); });
}

platform::MonitorDecision FakeKeyMonitors::typeHere(platform::KeyEvent const& event) {
  auto const snapshot = locals_;
  for (auto const& monitor : snapshot) {
    if (!monitor->mask.contains(maskOf(event.type))) continue;
    if (monitor->handler(event) == platform::MonitorDecision::consume) return platform::MonitorDecision::consume;
  }
  return platform::MonitorDecision::pass;
}

void FakeKeyMonitors::typeElsewhere(platform::KeyEvent const& event) {
  auto const snapshot = globals_;
  for (auto const& monitor : snapshot) {
    if (monitor->mask.contains(maskOf(event.type))) monitor->handler(event);
  }
}

}  // namespace morla::fake
