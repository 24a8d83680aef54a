#include "platform/macos/AppKitMenuHost.h"

#include <functional>
#include <memory>

#include "base/MainThread.h"
#include "platform/macos/ActionTarget.h"
#include "platform/macos/Rects.h"
#include "platform/macos/Text.h"

namespace morla::macos {
namespace {

NSMenuItem* makeItem(std::shared_ptr<platform::MenuItem> const& item, MainLoop& loop) {
  NSMenuItem* const native = [[NSMenuItem alloc] initWithTitle:labelText(item->title)
                                                        action:@selector(performAction:)
                                                 keyEquivalent:labelText(item->keyEquivalent)];
  auto* const target = [[MORLAActionTarget alloc] initWithAction:[item, &loop] {
    // The menu may still be on the screen: what the row does has a turn of its own.
    loop.post([item] {
      if (item->action) item->action();
    });
  }];
  native.target = target;
  native.representedObject = target;  // keeps it
  native.state = item->isTicked ? NSControlStateValueOn : NSControlStateValueOff;
  return native;
}

}  // namespace

void AppKitMenuHost::popUp(platform::Menu const& menu, BottomLeftPoint at) {
  assertIsMainThread();
  [open_ cancelTrackingWithoutAnimation];
  NSMenu* const native = [[NSMenu alloc] initWithTitle:@""];
  for (auto const& item : menu.items) [native addItem:makeItem(item, loop_)];
  open_ = native;

  // An open menu runs a loop of its own until it closes. Started by the run loop and not by posted work, that loop
  // still serves the main queue: timers and replies go on while the user looks at the menu.
  std::function<void()> const show = life_.weak([this, native, at] {
    if (open_ != native) return;
    [native popUpMenuPositioningItem:nil atLocation:nsPoint(at) inView:nil];
    if (open_ == native) open_ = nil;
  });
  [[NSRunLoop mainRunLoop] performBlock:^{
    show();
  }];
}

}  // namespace morla::macos
