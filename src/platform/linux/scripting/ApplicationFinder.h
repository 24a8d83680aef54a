#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "applescript/Host.h"
#include "platform/linux/scripting/Bundles.h"
#include "scriptingbus/ApplicationDirectory.h"

namespace morla::linux {

/// What a script means by `application "N"` and `application id "…"`: first among the running scriptable applications,
/// then among the installed ones. Starts nothing. A program has one for all its scripts: any thread.
class ApplicationFinder {
 public:
  ApplicationFinder(scriptingbus::ApplicationDirectory& running, Bundles installed)
      : running_(running), installed_(std::move(installed)) {}
  ApplicationFinder(ApplicationFinder const&) = delete;
  ApplicationFinder& operator=(ApplicationFinder const&) = delete;

  /// Whoever is found running is in `owners` then.
  [[nodiscard]] std::optional<applescript::ApplicationInformation> locate(
      applescript::ApplicationReference const& reference, scriptingbus::KnownOwners& owners);
  [[nodiscard]] bool isRunning(applescript::ApplicationReference const& reference);
  [[nodiscard]] Bundles const& installed() const { return installed_; }

 private:
  [[nodiscard]] std::optional<applescript::ApplicationInformation> runningNamed(std::string const& name,
                                                                                scriptingbus::KnownOwners& owners);

  scriptingbus::ApplicationDirectory& running_;
  Bundles installed_;
  std::mutex mutex_;
  /// Where a name was found last: asking one application again is much cheaper than asking the whole bus, and scripts
  /// name the same application every second.
  std::map<std::string, std::string> busNameOf_;
};

}  // namespace morla::linux
