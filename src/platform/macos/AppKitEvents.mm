#include "platform/macos/AppKitEvents.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <utility>

#include "base/MainThread.h"
#include "platform/macos/AppKitPanel.h"
#include "platform/macos/Rects.h"

namespace morla::macos {
namespace {

// The core's masks have AppKit's own bits.
static_assert(platform::kLeftMouseDown.bits == NSEventMaskLeftMouseDown);
static_assert(platform::kLeftMouseUp.bits == NSEventMaskLeftMouseUp);
static_assert(platform::kRightMouseDown.bits == NSEventMaskRightMouseDown);
static_assert(platform::kLeftMouseDragged.bits == NSEventMaskLeftMouseDragged);

std::optional<platform::MouseEventKind> kindOf(NSEvent* event) {
  switch (event.type) {
    case NSEventTypeLeftMouseDown:
      return platform::MouseEventKind::leftDown;
    case NSEventTypeLeftMouseUp:
      return platform::MouseEventKind::leftUp;
    case NSEventTypeRightMouseDown:
      return platform::MouseEventKind::rightDown;
    case NSEventTypeLeftMouseDragged:
      return platform::MouseEventKind::leftDragged;
    default:
      return std::nullopt;
  }
}

platform::Panel const* panelOf(NSWindow* window) {
  if (![window isKindOfClass:[MORLAPanel class]]) return nullptr;
  return static_cast<MORLAPanel*>(window).owner;
}

/// The event, to be passed on, or nil when `handler` keeps it. Events for no window of ours are not shown to it.
NSEvent* decide(platform::EventMonitors::Handler const& handler, NSEvent* event) {
  NSWindow* const window = event.window;
  auto const kind = kindOf(event);
  if (window == nil || !kind) return event;
  auto const decision = handler({*kind, panelOf(window), bottomLeft(event.locationInWindow)});
  return decision == platform::MonitorDecision::consume ? nil : event;
}

}  // namespace

Subscription AppKitEventMonitors::addLocalMonitor(platform::EventMask mask, Handler handler) {
  assertIsMainThread();
  id const monitor = [NSEvent addLocalMonitorForEventsMatchingMask:mask.bits
                                                           handler:^NSEvent*(NSEvent* event) {
                                                             return decide(handler, event);
                                                           }];
  return Subscription([monitor] {
    if (monitor != nil) [NSEvent removeMonitor:monitor];
  });
}

BottomLeftPoint AppKitPointer::location() const {
  return bottomLeft([NSEvent mouseLocation]);
}

}  // namespace morla::macos
