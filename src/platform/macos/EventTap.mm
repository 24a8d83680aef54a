#include "platform/macos/EventTap.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

#include <utility>

#include "base/MainThread.h"
#include "platform/macos/KeyMonitors.h"

namespace morla::macos {
namespace {

constexpr CGEventMask maskOf(CGEventType type) {
  return CGEventMask{1} << type;
}
constexpr CGEventMask kKeyEvents = maskOf(kCGEventKeyDown) | maskOf(kCGEventKeyUp) | maskOf(kCGEventFlagsChanged);

class SessionEventTap final : public platform::EventTap {
 public:
  /// None without the permission.
  static std::unique_ptr<SessionEventTap> make(Callback& callback) {
    auto tap = std::unique_ptr<SessionEventTap>(new SessionEventTap(callback));
    tap->port_ = CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, kKeyEvents,
                                  &SessionEventTap::eventCame, tap.get());
    if (tap->port_ == nullptr) return nullptr;
    tap->source_ = CFMachPortCreateRunLoopSource(kCFAllocatorDefault, tap->port_, 0);
    CFRunLoopAddSource(CFRunLoopGetMain(), tap->source_, kCFRunLoopCommonModes);
    tap->enable();
    return tap;
  }

  ~SessionEventTap() override {
    if (port_ != nullptr) CGEventTapEnable(port_, false);
    if (source_ != nullptr) {
      CFRunLoopRemoveSource(CFRunLoopGetMain(), source_, kCFRunLoopCommonModes);
      CFRelease(source_);
    }
    if (port_ != nullptr) {
      CFMachPortInvalidate(port_);
      CFRelease(port_);
    }
  }

  void enable() override { CGEventTapEnable(port_, true); }

 private:
  explicit SessionEventTap(Callback& callback) : callback_(callback) {}

  static CGEventRef eventCame(CGEventTapProxy, CGEventType type, CGEventRef event, void* userInfo) {
    auto& tap = *static_cast<SessionEventTap*>(userInfo);
    if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
      tap.callback_.tapWasDisabled(tap);
      return event;
    }
    return tap.decide(event) == platform::TapDecision::swallow ? nullptr : event;
  }

  /// What cannot be understood passes.
  platform::TapDecision decide(CGEventRef event) {
    NSEvent* const converted = [NSEvent eventWithCGEvent:event];
    if (converted == nil) return platform::TapDecision::pass;
    auto key = keyEvent(converted);
    if (!key) return platform::TapDecision::pass;
    key->isAutoRepeat = CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0;
    return callback_.handle(*key);
  }

  Callback& callback_;
  CFMachPortRef port_ = nullptr;
  CFRunLoopSourceRef source_ = nullptr;
};

}  // namespace

/// The system reports every key, so nothing has to be asked for.
std::unique_ptr<platform::EventTap> SessionEventTaps::makeTap(platform::EventTap::Callback& callback,
                                                              platform::WantedKeys /*wanted*/) {
  assertIsMainThread();
  return SessionEventTap::make(callback);
}

}  // namespace morla::macos
