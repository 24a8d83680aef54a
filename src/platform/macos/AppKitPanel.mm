#include "platform/macos/AppKitPanel.h"

#include <utility>
#include <vector>

#include "base/MainThread.h"
#include "base/Trace.h"
#include "platform/macos/Rects.h"
#include "platform/macos/Text.h"

// The core's numbers are AppKit's own.
static_assert(morla::view::kBorderless.bits == NSWindowStyleMaskBorderless);
static_assert(morla::view::kNonactivatingPanel.bits == NSWindowStyleMaskNonactivatingPanel);
static_assert(morla::view::kCanJoinAllSpaces.bits == NSWindowCollectionBehaviorCanJoinAllSpaces);
static_assert(morla::view::kFullScreenAuxiliary.bits == NSWindowCollectionBehaviorFullScreenAuxiliary);

@implementation MORLAPanel {
  morla::view::PanelBehaviour* _behaviour;
}

- (instancetype)initWithSpec:(morla::view::PanelSpec const&)spec behaviour:(morla::view::PanelBehaviour&)behaviour {
  self = [super initWithContentRect:morla::macos::nsRect(spec.contentRect)
                          styleMask:spec.styleMask.bits
                            backing:NSBackingStoreBuffered
                              defer:NO];
  if (self == nil) return nil;
  _behaviour = &behaviour;
  // Without this, `close` would release the window once more than ARC does.
  self.releasedWhenClosed = NO;
  self.opaque = spec.isOpaque;
  if (!spec.isOpaque) self.backgroundColor = [NSColor clearColor];
  self.hasShadow = spec.hasShadow;
  self.level = static_cast<NSWindowLevel>(spec.level);
  self.collectionBehavior = spec.collectionBehaviour.bits;
  self.movableByWindowBackground = spec.isMovableByBackground;
  self.hidesOnDeactivate = spec.hidesOnDeactivate;
  self.identifier = morla::macos::labelText(spec.name);
  self.title = morla::macos::labelText(spec.name);
  return self;
}

// AppKit may ask while the window is being made, when it has no behaviour yet.
- (BOOL)canBecomeKeyWindow {
  return _behaviour != nullptr && _behaviour->canBecomeKey();
}

- (BOOL)canBecomeMainWindow {
  return _behaviour != nullptr && _behaviour->canBecomeMain();
}

@end

namespace morla::macos {

AppKitPanel::AppKitPanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop)
    : name_(spec.name),
      loop_(loop),
      window_([[MORLAPanel alloc] initWithSpec:spec behaviour:behaviour]),
      content_([[MORLANodeView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)]),
      didMove_([NSNotificationCenter defaultCenter], NSWindowDidMoveNotification, window_, [this] { announceMove(); }) {
  window_.owner = this;
  window_.contentView = content_;
}

AppKitPanel::~AppKitPanel() {
  window_.owner = nullptr;
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
  [content_ showNode:std::move(content)];
}

BottomLeftRect AppKitPanel::frame() const {
  return bottomLeft(window_.frame);
}

void AppKitPanel::setFrameOrigin(BottomLeftPoint origin) {
  assertIsMainThread();
  [window_ setFrameOrigin:nsPoint(origin)];
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

Subscription AppKitPanel::onDidMove(std::function<void()> observer) {
  assertIsMainThread();
  return moved_.add(std::move(observer));
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

}  // namespace morla::macos
