#include "platform/macos/AppKitStatusBar.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "base/MainThread.h"
#include "platform/macos/ActionTarget.h"
#include "platform/macos/DrawingPainter.h"
#include "platform/macos/Rects.h"

namespace morla::macos {
namespace {

class AppKitStatusItemButton final : public platform::StatusItemButton {
 public:
  explicit AppKitStatusItemButton(NSStatusBarButton* button) : button_(button) {}

  void setImage(view::Drawing const& image) override {
    assertIsMainThread();
    button_.image = makeImage(image);
  }

  void setAction(std::function<void(platform::StatusItemButton&)> action) override {
    assertIsMainThread();
    target_ = [[MORLAActionTarget alloc] initWithAction:[this, action = std::move(action)] { action(*this); }];
    button_.target = target_;
    button_.action = @selector(performAction:);
  }

  [[nodiscard]] std::optional<BottomLeftRect> frameOnScreen() const override {
    NSWindow* const window = button_.window;
    if (window == nil) return std::nullopt;
    return bottomLeft([window convertRectToScreen:[button_ convertRect:button_.bounds toView:nil]]);
  }

 private:
  NSStatusBarButton* button_;
  MORLAActionTarget* target_ = nil;
};

class AppKitStatusItem final : public platform::StatusItem {
 public:
  explicit AppKitStatusItem(double length) : item_([[NSStatusBar systemStatusBar] statusItemWithLength:length]) {
    // The name under which the system remembers where the user has put the item.
    item_.autosaveName = @"MORLA";
    NSStatusBarButton* const button = item_.button;
    if (button != nil) button_.emplace(button);
  }
  ~AppKitStatusItem() override { [[NSStatusBar systemStatusBar] removeStatusItem:item_]; }
  AppKitStatusItem(AppKitStatusItem const&) = delete;
  AppKitStatusItem& operator=(AppKitStatusItem const&) = delete;

  [[nodiscard]] platform::StatusItemButton* button() override { return button_ ? &*button_ : nullptr; }

 private:
  NSStatusItem* item_;
  std::optional<AppKitStatusItemButton> button_;
};

}  // namespace

std::unique_ptr<platform::StatusItem> AppKitStatusBar::makeStatusItem(double length) {
  assertIsMainThread();
  return std::make_unique<AppKitStatusItem>(length);
}

}  // namespace morla::macos
