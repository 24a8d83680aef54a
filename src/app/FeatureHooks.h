#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Panel.h"
#include "platform/StatusItem.h"

namespace morla::platform {
class Environment;
}

/// What start-up and the application-wide reactions ask of the features, each as narrow as it is used.
namespace morla::app {

class HotkeyRegistration {
 public:
  virtual ~HotkeyRegistration() = default;
  virtual void registerHotkey() = 0;
};

class ScriptListener {
 public:
  virtual ~ScriptListener() = default;
  virtual void startListening() = 0;
};

class AirdropFolders {
 public:
  virtual ~AirdropFolders() = default;
  virtual void cleanupAirdropFolders() = 0;
};

/// The mirror window's controller. "Secondary window" is the mirror panel, which may not exist yet.
class MirrorWindow {
 public:
  virtual ~MirrorWindow() = default;
  /// True when the secondary window is now wanted on the screen.
  virtual bool toggleWindow(platform::Panel& anchoringTo) = 0;
  /// None before the window was first shown.
  [[nodiscard]] virtual platform::Panel* secondaryWindow() = 0;
  virtual void setUserWantsWindowVisible(bool value) = 0;
  virtual void handleFrontAppChange(std::string const& appNameLowercased, bool isOurAppFront) = 0;
};

class CreateFolderWindow {
 public:
  virtual ~CreateFolderWindow() = default;
  [[nodiscard]] virtual bool isVisible() const = 0;
};

class MenuBarPanel {
 public:
  virtual ~MenuBarPanel() = default;
  virtual void togglePanel(platform::StatusItemButton& sender) = 0;
};

class SettingsWindow {
 public:
  virtual ~SettingsWindow() = default;
  virtual void showSettings() = 0;
};

class UpdateCheck {
 public:
  virtual ~UpdateCheck() = default;
  virtual void checkForUpdates() = 0;
};

/// Gives a feature's shared object, made when it is first asked for; empty when this program does not have the feature.
template <typename T>
using Feature = std::function<T&()>;

/// The features of this program. Whoever brings one sets it while the program is wired, before start-up.
struct FeatureHooks {
  [[nodiscard]] static FeatureHooks& shared();
  [[nodiscard]] static std::unique_ptr<FeatureHooks> make(platform::Environment& environment);

  Feature<HotkeyRegistration> hotkeys;
  Feature<HotkeyRegistration> captureOneFolderHotkeys;
  Feature<HotkeyRegistration> airdropHotkeys;
  Feature<ScriptListener> captureOneFolderScripts;
  Feature<ScriptListener> airdropScripts;
  Feature<AirdropFolders> airdropFolders;
  Feature<MirrorWindow> mirrorWindow;
  Feature<CreateFolderWindow> createFolderWindow;
  /// Called once, at its place in the start-up.
  std::function<std::unique_ptr<MenuBarPanel>()> makeMenuBarPanel;
  Feature<SettingsWindow> settings;
  Feature<SettingsWindow> menuSettings;
  Feature<SettingsWindow> airdropSettings;
  Feature<UpdateCheck> updateCheck;
};

}  // namespace morla::app
