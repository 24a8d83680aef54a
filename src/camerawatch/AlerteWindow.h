#pragma once

#include <memory>
#include <optional>

#include "base/MainLoop.h"
#include "base/Subscription.h"
#include "camerawatch/AlerteSettingsView.h"
#include "camerawatch/CaptureOneFocus.h"
#include "camerawatch/FormatMonitor.h"
#include "platform/Panel.h"
#include "platform/Workspace.h"
#include "view/LiveView.h"
#include "view/PanelSpec.h"

namespace morla::platform {
class Environment;
}

namespace morla::camerawatch {

/// The class of the alert settings' window: its controls get the keyboard, and after each click Capture One gets the
/// focus back.
class AlertePanel : public view::PanelBehaviour {
 public:
  AlertePanel(MainLoop& loop, platform::Workspace& workspace) : loop_(loop), focus_(workspace) {}

  [[nodiscard]] bool canBecomeKey() const override { return true; }
  [[nodiscard]] bool canBecomeMain() const override { return false; }
  void sendEvent(view::PanelEvent event, std::function<void()> const& passOn) override;

 private:
  MainLoop& loop_;
  CaptureOneFocus focus_;
};

/// Opens the alert settings in a window of their own. One shared object; main thread.
class AlerteWindowController {
 public:
  struct Roles {
    MainLoop& loop;
    platform::Workspace& workspace;
    platform::PanelHost& panels;
  };

  AlerteWindowController(Roles roles, FormatMonitor& monitor);

  [[nodiscard]] static AlerteWindowController& shared();
  [[nodiscard]] static std::unique_ptr<AlerteWindowController> make(platform::Environment& environment);

  /// Brings the window forward, or opens a new one in the middle of the screen.
  void showSettings();

  /// The window that was opened last; none before the first.
  [[nodiscard]] platform::Panel* window() const { return window_.get(); }

 private:
  [[nodiscard]] view::Node content();
  void show(view::Node content);
  void windowWillClose();

  MainLoop& loop_;
  platform::PanelHost& panels_;
  FormatMonitor& monitor_;
  AlertePanel panelClass_;

  std::optional<AlerteSettingsView> view_;
  std::unique_ptr<platform::Panel> window_;
  Subscription closing_;
  std::optional<view::LiveView> live_;
};

}  // namespace morla::camerawatch
