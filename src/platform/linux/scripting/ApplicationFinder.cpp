#include "platform/linux/scripting/ApplicationFinder.h"

#include <utility>

#include "base/unicode/Unicode.h"

namespace morla::linux {

using applescript::ApplicationInformation;
using applescript::ApplicationReference;

static std::optional<ApplicationInformation> informationOf(std::optional<InstalledBundle> const& bundle) {
  if (!bundle) return std::nullopt;
  return ApplicationInformation{bundle->name, bundle->identifier};
}

std::optional<ApplicationInformation> ApplicationFinder::locate(ApplicationReference const& reference,
                                                                scriptingbus::KnownOwners& owners) {
  if (reference.kind == ApplicationReference::Kind::name) {
    if (auto const running = runningNamed(reference.text, owners)) return running;
    return informationOf(installed_.named(reference.text));
  }
  if (auto name = running_.nameOf(reference.text, owners))
    return ApplicationInformation{std::move(*name), reference.text};
  return informationOf(installed_.identifiedBy(reference.text));
}

bool ApplicationFinder::isRunning(ApplicationReference const& reference) {
  if (reference.kind == ApplicationReference::Kind::name) {
    scriptingbus::KnownOwners unused;
    if (runningNamed(reference.text, unused)) return true;
  } else if (running_.isRunning(reference.text)) {
    return true;
  }
  // It may run without having told its name yet, or be named in other letters than the bus name is.
  auto const bundle = reference.kind == ApplicationReference::Kind::name ? installed_.named(reference.text)
                                                                         : installed_.identifiedBy(reference.text);
  return bundle && running_.isRunning(bundle->identifier);
}

std::optional<ApplicationInformation> ApplicationFinder::runningNamed(std::string const& name,
                                                                      scriptingbus::KnownOwners& owners) {
  std::string remembered;
  {
    std::lock_guard const lock(mutex_);
    if (auto const found = busNameOf_.find(name); found != busNameOf_.end()) remembered = found->second;
  }
  if (!remembered.empty()) {
    auto const answer = running_.nameOf(remembered, owners);
    if (answer && unicode::equalsIgnoringCase(*answer, name)) return ApplicationInformation{*answer, remembered};
  }
  for (auto const& application : running_.scriptableApplications()) {
    if (!unicode::equalsIgnoringCase(application.name, name)) continue;
    std::lock_guard const lock(mutex_);
    busNameOf_[name] = application.busName;
    return ApplicationInformation{application.name, application.busName};
  }
  return std::nullopt;
}

}  // namespace morla::linux
