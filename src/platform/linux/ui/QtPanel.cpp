#include "platform/linux/ui/QtPanel.h"

#include <cmath>
#include <utility>
#include <vector>

#include "base/MainThread.h"
#include "base/Trace.h"

namespace morla::linux {
namespace {

Size withTitleBar(Size content, view::PanelSpec const& spec) {
  bool const isAbove = spec.styleMask.contains(view::kTitled) && !spec.styleMask.contains(view::kFullSizeContentView);
  return {content.width, content.height + (isAbove ? view::kTitleBarHeight : 0)};
}

}  // namespace

QtPanel::QtPanel(PanelServices const& services, view::PanelSpec const& spec, view::PanelBehaviour& behaviour)
    : services_(services),
      spec_(spec),
      window_(new PanelWindow(spec, behaviour, services.loop, services.client, services.compositor)),
      frame_{spec.contentRect.origin, withTitleBar(spec.contentRect.size, spec)},
      screensDidChange_(services.screens.onDidChange([this] { place(); })) {
  window_->onPress([this](QPointF pointer) { beginDrag(services_.screens.fromQt(pointer)); });
  window_->onDrag([this](QPointF pointer) { drag(services_.screens.fromQt(pointer)); });
  window_->onCloseRequest([this] { close(); });
  place();
}

QtPanel::~QtPanel() {
  if (isVisible_) services_.stack.didHide(window_->id());
}

void QtPanel::setContentSize(Size size) {
  setFrame({frame_.origin, withTitleBar(size, spec_)});
}

void QtPanel::setContent(view::Node content) {
  assertIsMainThread();
  window_->setContent(std::move(content));
}

void QtPanel::setFrame(BottomLeftRect frame) {
  assertIsMainThread();
  if (frame_ == frame) return;
  auto const before = std::exchange(frame_, frame);
  place();
  if (frame_.size != before.size) trace("resized");
  if (frame_.origin != before.origin) announceMove();
}

void QtPanel::setFrameOrigin(BottomLeftPoint origin) {
  setFrame({origin, frame_.size});
}

void QtPanel::centre() {
  auto const& areas = services_.screens.areas();
  if (areas.empty()) return;
  auto const& main = areas.front().inPoints;
  GlobalPoint const corner{main.origin.x + (main.size.width - frame_.size.width) / 2,
                           main.origin.y + (main.size.height - frame_.size.height) / 2};
  setFrameOrigin(services_.screens.flip().toBottomLeft(GlobalRect{corner, frame_.size}).origin);
}

void QtPanel::orderFrontRegardless() {
  assertIsMainThread();
  bool const wasVisible = std::exchange(isVisible_, true);
  window_->showOnTop();
  services_.stack.didShow(window_->id(), static_cast<int>(spec_.level));
  if (!wasVisible) trace("shown");
}

void QtPanel::orderOut() {
  assertIsMainThread();
  if (!std::exchange(isVisible_, false)) return;
  services_.stack.didHide(window_->id());
  window_->hideAway();
  trace("hidden");
}

void QtPanel::close() {
  assertIsMainThread();
  // An observer may destroy the panel.
  auto const isAlive = life_.reference();
  willClose_.call();
  if (isAlive) orderOut();
}

Subscription QtPanel::onWillClose(std::function<void()> observer) {
  assertIsMainThread();
  return willClose_.add(std::move(observer));
}

Subscription QtPanel::onDidMove(std::function<void()> observer) {
  assertIsMainThread();
  return didMove_.add(std::move(observer));
}

void QtPanel::place() {
  // Whoever moves a panel about may also want it half outside; the others must be seen in full.
  bool const isMovable = spec_.isMovableByBackground || spec_.styleMask.contains(view::kTitled);
  auto const placing = isMovable ? Placing::asAsked : Placing::inFullIfPossible;
  auto const& screens = services_.screens;
  shownAt_ = visiblePlace(screens.flip().toGlobal(frame_), screens.areas(), placing);
  window_->setGeometry(screens.toQt(shownAt_));
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
