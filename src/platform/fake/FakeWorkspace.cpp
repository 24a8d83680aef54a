#include "platform/fake/FakeWorkspace.h"

#include <algorithm>
#include <utility>

namespace morla::fake {

void FakeWorkspace::userActivates(std::optional<platform::RunningApplication> application) {
  if (std::exchange(front_, std::move(application)) != front_) activated_.call();
}

void FakeWorkspace::activate(platform::RunningApplication const& application) {
  journal_.add("workspace.activate " + application.localizedName.value_or(""));
  activated.push_back(application);
  if (std::ranges::find(running, application) != running.end()) userActivates(application);
}

void FakeWorkspace::activateSelf() {
  journal_.add("workspace.activateSelf");
  userActivates(self_);
}

std::optional<platform::BundleInformation> FakeWorkspace::bundleAt(std::string const& path) {
  auto const found = bundles.find(path);
  return found == bundles.end() ? std::nullopt : std::optional(found->second);
}

bool FakeWorkspace::openUrl(std::string const& url) {
  openedUrls.push_back(url);
  return true;
}

}  // namespace morla::fake
