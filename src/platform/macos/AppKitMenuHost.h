#pragma once

#import <AppKit/AppKit.h>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "platform/Menu.h"

namespace morla::macos {

class AppKitMenuHost final : public platform::MenuHost {
 public:
  explicit AppKitMenuHost(MainLoop& loop) : loop_(loop) {}
  void popUp(platform::Menu const& menu, BottomLeftPoint at) override;

 private:
  MainLoop& loop_;
  /// The menu that was asked for last; nil when it has closed.
  NSMenu* open_ = nil;
  Lifetime life_;
};

}  // namespace morla::macos
