#pragma once

#include <memory>

#include "base/MainLoop.h"
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

  /// Shows nothing, with a diagnostic line, while another program has the pointer to itself: the menu could not be
  /// closed by a click elsewhere.
  void popUp(platform::Menu const& menu, BottomLeftPoint at) override;

 private:
  MainLoop& loop_;
  Screens const& screens_;
  XClient& client_;
  Compositor const& compositor_;
  std::unique_ptr<QMenu> open_;
};

}  // namespace morla::linux
