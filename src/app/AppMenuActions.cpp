#include "app/AppMenuActions.h"

#include "camerawatch/AlerteWindow.h"
#include "platform/Environment.h"

namespace morla::app {

FeatureHooks& FeatureHooks::shared() {
  return platform::Environment::active().shared<FeatureHooks>();
}

std::unique_ptr<FeatureHooks> FeatureHooks::make(platform::Environment& /*environment*/) {
  return std::make_unique<FeatureHooks>();
}

AppMenuActions& AppMenuActions::shared() {
  return platform::Environment::active().shared<AppMenuActions>();
}

std::unique_ptr<AppMenuActions> AppMenuActions::make(platform::Environment& environment) {
  return std::make_unique<AppMenuActions>(environment.platform().mainLoop, FeatureHooks::shared(),
                                          mirror::FloatingButtonState::shared());
}

void AppMenuActions::openSettings() {
  if (features_.settings) features_.settings().showSettings();
}

void AppMenuActions::openMenuSettings() {
  showSoon(features_.menuSettings);
}
void AppMenuActions::openAlerte() {
  loop_.post([] { camerawatch::AlerteWindowController::shared().showSettings(); });
}
void AppMenuActions::openAirdropSettings() {
  showSoon(features_.airdropSettings);
}
void AppMenuActions::toggleWindowMode() {
  floatingButton_.toggleWindowMode();
}
void AppMenuActions::toggleCheckMode() {
  floatingButton_.toggleCheckMode();
}

void AppMenuActions::showSoon(Feature<SettingsWindow> const& window) {
  if (window) loop_.post([window] { window().showSettings(); });
}

}  // namespace morla::app
