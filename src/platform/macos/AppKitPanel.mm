#include "platform/macos/AppKitPanel.h"

#include <utility>
#include <vector>

#include "base/MainThread.h"
#include "base/Trace.h"
#include "platform/macos/Rects.h"
#include "platform/macos/Text.h"

namespace morla::macos {

AppKitPanel::AppKitPanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop)
    : name_(spec.name),
      loop_(loop),
      content_(loop),
      window_(makePanelWindow(spec, behaviour)),
      didMove_([NSNotificationCenter defaultCenter], NSWindowDidMoveNotification, window_, [this] { announceMove(); }) {
  window_.owner = this;
  window_.contentView = content_.view();
  std::function<void()> const willClose = life_.weak([this] { announceClose(); });
  window_.onWillClose = ^{
    willClose();
  };
}

AppKitPanel::~AppKitPanel() {
  window_.owner = nullptr;
  window_.onWillClose = nil;
  [window_ close];
}

void AppKitPanel::setContentSize(Size size) {
  assertIsMainThread();
  // `setContentSize:` does not say which corner of the window stays.
  NSRect frame = [window_ frameRectForContentRect:nsRect({{0, 0}, size})];
  frame.origin = window_.frame.origin;
  [window_ setFrame:frame display:YES];
  trace("resized");
}

void AppKitPanel::setContent(view::Node content) {
  assertIsMainThread();
  content_.show(content);
}

BottomLeftRect AppKitPanel::frame() const {
  return bottomLeft(window_.frame);
}

void AppKitPanel::setFrame(BottomLeftRect frame) {
  assertIsMainThread();
  bool const isResized = this->frame().size != frame.size;
  [window_ setFrame:nsRect(frame) display:YES];
  if (isResized) trace("resized");
}

void AppKitPanel::setFrameOrigin(BottomLeftPoint origin) {
  assertIsMainThread();
  [window_ setFrameOrigin:nsPoint(origin)];
}

// Not `center`, which puts a window somewhat above the middle.
void AppKitPanel::centre() {
  assertIsMainThread();
  NSScreen* const screen = [NSScreen screens].firstObject;
  if (screen == nil) return;
  auto const [origin, area] = bottomLeft(screen.frame);
  auto const size = frame().size;
  setFrameOrigin({origin.x + (area.width - size.width) / 2, origin.y + (area.height - size.height) / 2});
}

bool AppKitPanel::isVisible() const {
  return window_.visible;
}

void AppKitPanel::orderFrontRegardless() {
  assertIsMainThread();
  bool const wasVisible = isVisible();
  [window_ orderFrontRegardless];
  if (!wasVisible) trace("shown");
}

void AppKitPanel::orderOut() {
  assertIsMainThread();
  bool const wasVisible = isVisible();
  [window_ orderOut:nil];
  if (wasVisible) trace("hidden");
}

void AppKitPanel::close() {
  assertIsMainThread();
  [window_ close];
}

Subscription AppKitPanel::onWillClose(std::function<void()> observer) {
  assertIsMainThread();
  return closing_.add(std::move(observer));
}

Subscription AppKitPanel::onDidMove(std::function<void()> observer) {
  assertIsMainThread();
  return moved_.add(std::move(observer));
}

void AppKitPanel::announceClose() {
  // An observer may end the panel.
  auto hidden = life_.weak([this] { trace("hidden"); });
  bool const wasVisible = isVisible();
  closing_.call();
  if (wasVisible) hidden();
}

void AppKitPanel::announceMove() {
  if (std::exchange(isMoveAnnounced_, true)) return;
  loop_.post(life_.weak([this] {
    isMoveAnnounced_ = false;
    trace("moved");
    moved_.call();
  }));
}

void AppKitPanel::trace(char const* event) const {
  auto* const active = Trace::active();
  if (active == nullptr) return;
  auto const at = frame();
  std::vector<double> const numbers{at.origin.x, at.origin.y, at.size.width, at.size.height};
  active->line({{"panel", Json(name_)}, {"event", Json(event)}, {"frame", Json(numbers)}});
}

std::unique_ptr<platform::Panel> AppKitPanelHost::makePanel(view::PanelSpec const& spec,
                                                            view::PanelBehaviour& behaviour) {
  assertIsMainThread();
  return std::make_unique<AppKitPanel>(spec, behaviour, loop_);
}

Size AppKitPanelHost::fittingSize(view::Node const& content) {
  assertIsMainThread();
  return macos::fittingSize(content, loop_);
}

}  // namespace morla::macos
