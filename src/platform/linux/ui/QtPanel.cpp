#include "platform/linux/ui/QtPanel.h"

#include <cmath>
#include <utility>
#include <vector>

#include "base/MainThread.h"
#include "base/Trace.h"

namespace morla::linux {

QtPanel::QtPanel(PanelServices const& services, view::PanelSpec const& spec)
    : services_(services),
      spec_(spec),
      window_(spec.name, spec.isOpaque ? Opacity::opaque : Opacity::translucent, services.client, services.compositor),
      frame_(spec.contentRect),
      screensDidChange_(services.screens.onDidChange([this] { place(); })) {
  if (spec_.isMovableByBackground) {
    window_.onPress([this](QPointF pointer) { beginDrag(services_.screens.fromQt(pointer)); });
    window_.onDrag([this](QPointF pointer) { drag(services_.screens.fromQt(pointer)); });
  }
  place();
}

QtPanel::~QtPanel() {
  if (isVisible_) services_.stack.didHide(window_.id());
}

void QtPanel::setContentSize(Size size) {
  assertIsMainThread();
  if (frame_.size == size) return;
  frame_.size = size;
  place();
  trace("resized");
}

void QtPanel::setContent(view::Node content) {
  assertIsMainThread();
  window_.setContent(std::move(content));
}

void QtPanel::setFrameOrigin(BottomLeftPoint origin) {
  assertIsMainThread();
  if (frame_.origin == origin) return;
  frame_.origin = origin;
  place();
  announceMove();
}

void QtPanel::orderFrontRegardless() {
  assertIsMainThread();
  bool const wasVisible = std::exchange(isVisible_, true);
  window_.showOnTop();
  services_.stack.didShow(window_.id(), static_cast<int>(spec_.level));
  if (!wasVisible) trace("shown");
}

void QtPanel::orderOut() {
  assertIsMainThread();
  if (!std::exchange(isVisible_, false)) return;
  services_.stack.didHide(window_.id());
  window_.hide();
  services_.client.synchronise();
  trace("hidden");
}

Subscription QtPanel::onDidMove(std::function<void()> observer) {
  assertIsMainThread();
  return didMove_.add(std::move(observer));
}

void QtPanel::place() {
  // Whoever moves a panel about may also want it half outside; the others must be seen in full.
  auto const placing = spec_.isMovableByBackground ? Placing::asAsked : Placing::inFullIfPossible;
  auto const& screens = services_.screens;
  shownAt_ = visiblePlace(screens.flip().toGlobal(frame_), screens.areas(), placing);
  window_.setGeometry(screens.toQt(shownAt_));
}

void QtPanel::beginDrag(GlobalPoint pointer) {
  grip_ = {pointer.x - shownAt_.origin.x, pointer.y - shownAt_.origin.y};
}

void QtPanel::drag(GlobalPoint pointer) {
  GlobalPoint const corner{std::round(pointer.x - grip_.x), std::round(pointer.y - grip_.y)};
  if (corner == shownAt_.origin) return;
  setFrameOrigin(services_.screens.flip().toBottomLeft(GlobalRect{corner, frame_.size}).origin);
}

void QtPanel::announceMove() {
  if (didMove_.size() == 0) {
    // Whoever begins to observe in this turn observes later moves, not this one.
    trace("moved");
    return;
  }
  if (std::exchange(isMoveAnnounced_, true)) return;
  services_.loop.post(life_.weak([this] {
    isMoveAnnounced_ = false;
    trace("moved");
    didMove_.call();
  }));
}

void QtPanel::trace(char const* event) const {
  auto* const trace = Trace::active();
  if (trace == nullptr) return;
  std::vector<double> const frame{frame_.origin.x, frame_.origin.y, frame_.size.width, frame_.size.height};
  trace->line({{"panel", Json(spec_.name)}, {"event", Json(event)}, {"frame", Json(frame)}});
}

}  // namespace morla::linux
