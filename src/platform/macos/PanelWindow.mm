#include "platform/macos/PanelWindow.h"

#include <optional>

#include "platform/macos/Rects.h"
#include "platform/macos/Text.h"

// The core's numbers are AppKit's own.
static_assert(morla::view::kBorderless.bits == NSWindowStyleMaskBorderless);
static_assert(morla::view::kTitled.bits == NSWindowStyleMaskTitled);
static_assert(morla::view::kClosable.bits == NSWindowStyleMaskClosable);
static_assert(morla::view::kNonactivatingPanel.bits == NSWindowStyleMaskNonactivatingPanel);
static_assert(morla::view::kFullSizeContentView.bits == NSWindowStyleMaskFullSizeContentView);
static_assert(morla::view::kCanJoinAllSpaces.bits == NSWindowCollectionBehaviorCanJoinAllSpaces);
static_assert(morla::view::kFullScreenAuxiliary.bits == NSWindowCollectionBehaviorFullScreenAuxiliary);

// The panels' classes as the system sees them, by name.
@interface FloatingButtonPanel : MORLAPanel
@end
@interface AlertePanel : MORLAPanel
@end

@implementation FloatingButtonPanel
@end
@implementation AlertePanel
@end

namespace {

std::optional<morla::view::PanelEvent> eventOf(NSEventType type) {
  switch (type) {
    case NSEventTypeLeftMouseDown:
      return morla::view::PanelEvent::leftMouseDown;
    case NSEventTypeLeftMouseUp:
      return morla::view::PanelEvent::leftMouseUp;
    case NSEventTypeRightMouseDown:
      return morla::view::PanelEvent::rightMouseDown;
    case NSEventTypeRightMouseUp:
      return morla::view::PanelEvent::rightMouseUp;
    case NSEventTypeOtherMouseDown:
      return morla::view::PanelEvent::otherMouseDown;
    case NSEventTypeOtherMouseUp:
      return morla::view::PanelEvent::otherMouseUp;
    default:
      return std::nullopt;
  }
}

}  // namespace

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
  self.titlebarAppearsTransparent = spec.hasTransparentTitleBar;
  self.titleVisibility = spec.hasTransparentTitleBar ? NSWindowTitleHidden : NSWindowTitleVisible;
  // This program hardly ever is the active one.
  self.allowsToolTipsWhenApplicationIsInactive = YES;
  self.identifier = morla::macos::labelText(spec.name);
  self.title = morla::macos::labelText(spec.title);
  self.delegate = self;
  return self;
}

// AppKit may ask while the window is being made, when it is nobody's yet.
- (BOOL)canBecomeKeyWindow {
  return self.owner != nullptr && _behaviour->canBecomeKey();
}

- (BOOL)canBecomeMainWindow {
  return self.owner != nullptr && _behaviour->canBecomeMain();
}

- (void)sendEvent:(NSEvent*)event {
  // What the event does may be the end of the panel.
  __attribute__((objc_precise_lifetime)) MORLAPanel* const alive = self;
  auto const kind = eventOf(event.type);
  if (!kind || alive.owner == nullptr) {
    [super sendEvent:event];
    return;
  }
  _behaviour->sendEvent(*kind, [&] { [super sendEvent:event]; });
  // A control that follows the pointer while it is pressed takes the release out of the queue itself.
  NSEvent* const last = [NSApplication sharedApplication].currentEvent;
  bool const isReleased = *kind == morla::view::PanelEvent::leftMouseDown && last.type == NSEventTypeLeftMouseUp;
  if (isReleased && last.window == alive && alive.owner != nullptr) {
    _behaviour->sendEvent(morla::view::PanelEvent::leftMouseUp, [] {});
  }
}

- (void)windowWillClose:(NSNotification*)notification {
  if (self.onWillClose != nil) self.onWillClose();
}

@end

namespace morla::macos {

MORLAPanel* makePanelWindow(view::PanelSpec const& spec, view::PanelBehaviour& behaviour) {
  Class const named = NSClassFromString(labelText(spec.name));
  if ([named isSubclassOfClass:[MORLAPanel class]]) return [[named alloc] initWithSpec:spec behaviour:behaviour];
  return [[MORLAPanel alloc] initWithSpec:spec behaviour:behaviour];
}

}  // namespace morla::macos
