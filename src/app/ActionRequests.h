#pragma once

#include <string_view>

#include "app/AppMenuActions.h"
#include "app/FeatureHooks.h"
#include "platform/Application.h"

namespace morla::app {

/// Actions by name, for desktop shortcuts and the command line: the AppMenuActions, "checkForUpdates",
/// "openAutomationSettings" and "quit". Main thread.
class ActionRequests {
 public:
  ActionRequests(AppMenuActions& actions, FeatureHooks& features, platform::Application& application)
      : actions_(actions), features_(features), application_(application) {}

  platform::ActionOutcome perform(std::string_view name);

 private:
  AppMenuActions& actions_;
  FeatureHooks& features_;
  platform::Application& application_;
};

}  // namespace morla::app
