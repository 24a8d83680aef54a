#pragma once

#include <memory>
#include <string>

#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/QtApplication.h"
#include "platform/linux/ui/QtEventMonitors.h"
#include "platform/linux/ui/QtMainLoop.h"
#include "platform/linux/ui/QtMenuHost.h"
#include "platform/linux/ui/QtPanelHost.h"
#include "platform/linux/ui/QtStatusBar.h"

namespace morla::linux {

/// The roles that Qt and X fill, joined. Made once, on the main thread, after the QApplication, and gone before it.
class LinuxUi {
 public:
  /// None when Qt does not run on an X server or the server takes no further connection; `failure` then says so in one
  /// line.
  static std::unique_ptr<LinuxUi> open(std::string& failure);
  ~LinuxUi();

  [[nodiscard]] QtMainLoop& mainLoop() { return *loop_; }
  [[nodiscard]] QtApplication& application() { return application_; }
  [[nodiscard]] platform::PanelHost& panels() { return panels_; }
  [[nodiscard]] platform::StatusBar& statusBar() { return statusBar_; }
  [[nodiscard]] platform::MenuHost& menus() { return menus_; }
  [[nodiscard]] platform::EventMonitors& eventMonitors() { return eventMonitors_; }
  [[nodiscard]] platform::Pointer& pointer() { return pointer_; }
  [[nodiscard]] Screens& screens() { return screens_; }

 private:
  LinuxUi(std::unique_ptr<QtMainLoop> loop, std::unique_ptr<XServer> server);
  [[nodiscard]] PanelServices services() { return {*loop_, screens_, client_, compositor_, stack_}; }

  std::unique_ptr<QtMainLoop> loop_;
  std::unique_ptr<XServer> server_;
  XClient client_;
  Compositor compositor_;
  Appearance appearance_;
  Screens screens_;
  PanelStack stack_;
  QtApplication application_;
  QtPanelHost panels_;
  QtPointer pointer_;
  QtEventMonitors eventMonitors_;
  QtMenuHost menus_;
  QtStatusBar statusBar_;
};

}  // namespace morla::linux
