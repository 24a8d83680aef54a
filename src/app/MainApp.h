#pragma once

#include <memory>
#include <vector>

#include "app/ActionRequests.h"
#include "app/AppMenuActions.h"
#include "app/FeatureHooks.h"
#include "app/FloatingButtonMouse.h"
#include "base/Lifetime.h"
#include "camerawatch/CaptureOneFocus.h"
#include "camerawatch/FormatMonitor.h"
#include "mirror/FloatingButton.h"
#include "mirror/FloatingButtonState.h"
#include "platform/Platform.h"

namespace morla::platform {
class Environment;
}

namespace morla::app {

/// The program's spine: starts everything in a fixed order and ties the subsystems together. Confined to the main
/// thread.
class MainApp : private FloatingButtonMouse::Surroundings {
 public:
  /// `environment` and the features in its FeatureHooks outlive this object.
  explicit MainApp(platform::Environment& environment);

  /// Starts up, runs the event loop, and returns the process's exit status when the user has quit.
  int main();

 private:
  // Start-up, in the order of the calls.
  void makeFloatingButton();
  void makeContextMenu();
  void makeStatusItem();
  void restoreFloatingButtonPosition();
  void observeFloatingButton();
  void observeApplication();
  void startFeatures();

  // Reactions, each on a turn of its own.
  void handleFrontAppDidChange();
  void handleWindowModeChanged();
  void handleHotkeyPressed();

  /// Toggles the mirror window and brings it forward when it is wanted.
  void toggleMirrorWindow();
  void traceFrontApplication();

  // The floating button's mouse.
  [[nodiscard]] BottomLeftPoint pointerLocation() const override;
  void clicked() override;
  void released() override;
  void contextMenuWanted(BottomLeftPoint inPanel) override;

  platform::Platform& platform_;
  NotificationCenter& notifications_;
  FeatureHooks& features_;
  camerawatch::CaptureOneFocus focus_;

  mirror::FloatingButtonPanel panelClass_;
  std::unique_ptr<platform::Panel> floatingButton_;
  std::unique_ptr<MenuBarPanel> menuBarPanelController_;
  std::unique_ptr<platform::StatusItem> statusItem_;
  platform::Menu contextMenu_;
  FloatingButtonMouse mouse_{*this};
  std::unique_ptr<ActionRequests> actionRequests_;
  std::vector<Subscription> observations_;
  Lifetime life_;
};

}  // namespace morla::app
