#pragma once

#include "base/ObserverList.h"
#include "platform/Workspace.h"
#include "platform/macos/Observation.h"

namespace morla::macos {

class AppKitWorkspace final : public platform::Workspace {
 public:
  AppKitWorkspace();
  [[nodiscard]] std::vector<platform::RunningApplication> runningApplications() override;
  [[nodiscard]] std::optional<platform::RunningApplication> frontmostApplication() override;
  [[nodiscard]] Subscription onActivated(std::function<void()> observer) override;
  void activate(platform::RunningApplication const& application) override;
  void activateSelf() override;
  [[nodiscard]] std::optional<platform::BundleInformation> bundleAt(std::string const& path) override;
  bool openUrl(std::string const& url) override;

 private:
  ObserverList<> activated_;
  Observation didActivate_;
};

}  // namespace morla::macos
