#include "app/ActionRequests.h"

#include <functional>
#include <map>

#include "camerawatch/FormatMonitor.h"

namespace morla::app {

platform::ActionOutcome ActionRequests::perform(std::string_view name) {
  using platform::ActionOutcome;
  struct Action {
    bool isAvailable;
    std::function<void()> perform;
  };
  std::map<std::string_view, Action> const actions{
      {"openSettings", {static_cast<bool>(features_.settings), [this] { actions_.openSettings(); }}},
      {"openMenuSettings", {static_cast<bool>(features_.menuSettings), [this] { actions_.openMenuSettings(); }}},
      {"openAlerte", {true, [this] { actions_.openAlerte(); }}},
      {"openAirdropSettings",
       {static_cast<bool>(features_.airdropSettings), [this] { actions_.openAirdropSettings(); }}},
      {"toggleWindowMode", {true, [this] { actions_.toggleWindowMode(); }}},
      {"toggleCheckMode", {true, [this] { actions_.toggleCheckMode(); }}},
      {"checkForUpdates",
       {static_cast<bool>(features_.updateCheck), [this] { features_.updateCheck().checkForUpdates(); }}},
      {"openAutomationSettings", {true, [] { camerawatch::FormatMonitor::shared().openAutomationSettings(); }}},
      {"quit", {true, [this] { application_.terminate(); }}},
  };
  auto const found = actions.find(name);
  if (found == actions.end()) return ActionOutcome::unknown;
  if (!found->second.isAvailable) return ActionOutcome::unavailable;
  found->second.perform();
  return ActionOutcome::done;
}

}  // namespace morla::app
