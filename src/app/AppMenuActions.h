#pragma once

#include <memory>

#include "app/FeatureHooks.h"
#include "base/MainLoop.h"
#include "mirror/FloatingButtonState.h"

namespace morla::app {

/// What the user can ask for from a menu. No state of its own; main thread. A window that this program does not have is
/// not opened.
class AppMenuActions {
 public:
  AppMenuActions(MainLoop& loop, FeatureHooks& features, mirror::FloatingButtonState& floatingButton)
      : loop_(loop), features_(features), floatingButton_(floatingButton) {}

  [[nodiscard]] static AppMenuActions& shared();
  [[nodiscard]] static std::unique_ptr<AppMenuActions> make(platform::Environment& environment);

  /// Opens the shortcut settings at once; the other windows open on a later turn of the loop.
  void openSettings();
  void openMenuSettings();
  void openAlerte();
  void openAirdropSettings();
  void toggleWindowMode();
  void toggleCheckMode();

 private:
  void showSoon(Feature<SettingsWindow> const& window);

  MainLoop& loop_;
  FeatureHooks& features_;
  mirror::FloatingButtonState& floatingButton_;
};

}  // namespace morla::app
