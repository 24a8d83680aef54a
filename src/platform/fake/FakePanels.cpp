#include "platform/fake/FakePanels.h"

#include "base/Decimal.h"

namespace morla::fake {

FakePanel::FakePanel(MainLoop& loop, Journal& journal, view::PanelSpec spec, view::PanelBehaviour& behaviour)
    : loop_(loop), journal_(journal), spec_(std::move(spec)), behaviour_(behaviour), frame_(spec_.contentRect) {}

void FakePanel::setContentSize(Size size) {
  journal_.add("panel.setContentSize " + shortestDecimal(size.width) + "x" + shortestDecimal(size.height));
  frame_.size = size;
}

void FakePanel::setContent(view::Node content) {
  journal_.add("panel.setContent");
  content_ = std::move(content);
}

void FakePanel::setFrameOrigin(BottomLeftPoint origin) {
  journal_.add("panel.setFrameOrigin " + shortestDecimal(origin.x) + " " + shortestDecimal(origin.y));
  if (frame_.origin == origin) return;
  frame_.origin = origin;
  if (std::exchange(isMoveDue_, true)) return;
  loop_.post([self = std::weak_ptr(self_)] {
    auto const panel = self.lock();
    if (panel == nullptr) return;
    (*panel)->isMoveDue_ = false;
    (*panel)->didMove_.call();
  });
}

void FakePanel::orderFrontRegardless() {
  journal_.add("panel.orderFrontRegardless");
  isVisible_ = true;
}

void FakePanel::orderOut() {
  journal_.add("panel.orderOut");
  isVisible_ = false;
}

std::unique_ptr<platform::Panel> FakePanelHost::makePanel(view::PanelSpec const& spec,
                                                          view::PanelBehaviour& behaviour) {
  journal_.add("panels.makePanel " + spec.name);
  auto panel = std::make_unique<FakePanel>(loop_, journal_, spec, behaviour);
  panels.push_back(panel.get());
  return panel;
}

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
