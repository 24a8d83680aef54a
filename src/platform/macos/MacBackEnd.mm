#import <AppKit/AppKit.h>

#include "platform/BackEnd.h"
#include "platform/macos/AppKitApplication.h"
#include "platform/macos/AppKitEvents.h"
#include "platform/macos/AppKitMenuHost.h"
#include "platform/macos/AppKitPanel.h"
#include "platform/macos/AppKitStatusBar.h"
#include "platform/macos/AppKitWorkspace.h"
#include "platform/macos/AppleScriptRunner.h"
#include "platform/macos/EventTap.h"
#include "platform/macos/FoundationFiles.h"
#include "platform/macos/FoundationUserDefaults.h"
#include "platform/macos/GlobalQueues.h"
#include "platform/macos/KeyMonitors.h"
#include "platform/macos/MainQueueLoop.h"

namespace morla::macos {
namespace {

class MacBackEnd final : public platform::BackEnd {
 public:
  [[nodiscard]] platform::Platform platform() override {
    return {loop_,      background_, scripts_,       files_,   ownBundle_, application_, workspace_,  panels_,
            statusBar_, menus_,      eventMonitors_, pointer_, defaults_,  eventTaps_,   keyMonitors_};
  }

 private:
  MainQueueLoop loop_;
  GlobalQueues background_;
  AppleScriptRunner scripts_;
  FoundationFiles files_;
  MainBundle ownBundle_;
  AppKitApplication application_;
  AppKitWorkspace workspace_;
  AppKitPanelHost panels_{loop_};
  AppKitStatusBar statusBar_;
  AppKitMenuHost menus_{loop_};
  AppKitEventMonitors eventMonitors_;
  AppKitPointer pointer_;
  FoundationUserDefaults defaults_;
  SessionEventTaps eventTaps_;
  AppKitKeyMonitors keyMonitors_;
};

}  // namespace
}  // namespace morla::macos

namespace morla::platform {

// The system's own `defaults` reads and writes the settings; actions have no command here.
std::optional<int> runBackEndCommand(std::vector<std::string> const&) {
  return std::nullopt;
}

std::string backEndCommandHelp() {
  return {};
}

BackEndOrFailure openBackEnd(int&, char**) {
  // The connection to the window server, which everything else needs.
  [NSApplication sharedApplication];
  return {std::make_unique<macos::MacBackEnd>(), {}};
}

}  // namespace morla::platform
