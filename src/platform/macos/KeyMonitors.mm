#include "platform/macos/KeyMonitors.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "base/MainThread.h"
#include "platform/macos/Text.h"

namespace morla::macos {

// The core's masks and flags have AppKit's own bits.
static_assert(platform::kKeyDown.bits == NSEventMaskKeyDown);
static_assert(platform::kKeyUp.bits == NSEventMaskKeyUp);
static_assert(platform::kCapsLockFlag.bits == NSEventModifierFlagCapsLock);
static_assert(platform::kShiftFlag.bits == NSEventModifierFlagShift);
static_assert(platform::kControlFlag.bits == NSEventModifierFlagControl);
static_assert(platform::kOptionFlag.bits == NSEventModifierFlagOption);
static_assert(platform::kCommandFlag.bits == NSEventModifierFlagCommand);

std::optional<platform::KeyEvent> keyEvent(NSEvent* event) {
  platform::KeyEvent key;
  key.keyCode = event.keyCode;
  key.modifierFlags = {event.modifierFlags};
  switch (event.type) {
    case NSEventTypeFlagsChanged:
      // To ask it for characters would raise an exception.
      key.type = platform::KeyEventType::flagsChanged;
      return key;
    case NSEventTypeKeyDown:
      key.type = platform::KeyEventType::down;
      key.isAutoRepeat = event.isARepeat;
      break;
    case NSEventTypeKeyUp:
      key.type = platform::KeyEventType::up;
      break;
    default:
      return std::nullopt;
  }
  key.charactersIgnoringModifiers = optionalUtf8(event.charactersIgnoringModifiers).value_or("");
  return key;
}

Subscription AppKitKeyMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  assertIsMainThread();
  id const monitor =
      [NSEvent addLocalMonitorForEventsMatchingMask:mask.bits
                                            handler:^NSEvent*(NSEvent* event) {
                                              auto const key = keyEvent(event);
                                              if (!key) return event;
                                              return handler(*key) == platform::MonitorDecision::consume ? nil : event;
                                            }];
  return Subscription([monitor] {
    if (monitor != nil) [NSEvent removeMonitor:monitor];
  });
}

Subscription AppKitKeyMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  assertIsMainThread();
  id const monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:mask.bits
                                                            handler:^(NSEvent* event) {
                                                              if (auto const key = keyEvent(event)) handler(*key);
                                                            }];
  return Subscription([monitor] {
    if (monitor != nil) [NSEvent removeMonitor:monitor];
  });
}

}  // namespace morla::macos
