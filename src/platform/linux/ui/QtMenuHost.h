#pragma once

#include <memory>

#include "base/MainLoop.h"
#include "base/Subscription.h"
#include "platform/Menu.h"
#include "platform/linux/ui/Compositor.h"
#include "platform/linux/ui/Screens.h"
#include "platform/linux/ui/XClient.h"

class QMenu;

namespace morla::linux {

class QtMenuHost : public platform::MenuHost {
 public:
  QtMenuHost(MainLoop& loop, Screens const& screens, XClient& client, Compositor const& compositor);
  ~QtMenuHost() override;

  /// While another program has the pointer to itself, the menu could not be closed by a click elsewhere. Window
  /// managers take it for a moment at every click, so the menu waits a little; then it is given up with a diagnostic
  /// line.
  void popUp(platform::Menu const& menu, BottomLeftPoint at) override;

 private:
  void closeOpen();
  void showWhenPointerIsFree(platform::Menu const& menu, BottomLeftPoint at, TimePoint deadline);
  void show(platform::Menu const& menu, BottomLeftPoint at);

  MainLoop& loop_;
  Screens const& screens_;
  XClient& client_;
  Compositor const& compositor_;
  std::unique_ptr<QMenu> open_;
  Subscription nextTry_;
};

}  // namespace morla::linux
