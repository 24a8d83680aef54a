#include "platform/fake/FakePanels.h"

#include "base/Decimal.h"

namespace morla::fake {

std::unique_ptr<platform::StatusItem> FakeStatusBar::makeStatusItem(double length) {
  class Item : public platform::StatusItem {
   public:
    explicit Item(platform::StatusItemButton* button) : button_(button) {}
    platform::StatusItemButton* button() override { return button_; }

   private:
    platform::StatusItemButton* button_;
  };
  journal_.add("statusBar.makeStatusItem " + shortestDecimal(length));
  return std::make_unique<Item>(givesButton ? &button : nullptr);
}

Subscription FakeEventMonitors::addLocalMonitor(platform::EventMask mask, Handler handler) {
  journal_.add("eventMonitors.addLocalMonitor " + std::to_string(mask.bits));
  auto monitor = std::make_shared<Monitor>(Monitor{mask, std::move(handler)});
  monitors_.push_back(monitor);
  return Subscription([this, monitor] { std::erase(monitors_, monitor); });
}

platform::MonitorDecision FakeEventMonitors::send(platform::MouseEvent const& event) {
  auto const snapshot = monitors_;
  for (auto const& monitor : snapshot) {
    if (!monitor->mask.contains(platform::maskOf(event.kind))) continue;
    if (monitor->handler(event) == platform::MonitorDecision::consume) return platform::MonitorDecision::consume;
  }
  return platform::MonitorDecision::pass;
}

}  // namespace morla::fake
