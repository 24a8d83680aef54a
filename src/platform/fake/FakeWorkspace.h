#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/ObserverList.h"
#include "platform/Workspace.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

/// A desktop as a few lists. What is activated becomes frontmost when it runs, as on a real one.
class FakeWorkspace : public platform::Workspace {
 public:
  FakeWorkspace(Journal& journal, platform::RunningApplication self) : journal_(journal), self_(std::move(self)) {}

  std::vector<platform::RunningApplication> runningApplications() override { return running; }
  std::optional<platform::RunningApplication> frontmostApplication() override { return front_; }
  Subscription onActivated(std::function<void()> observer) override { return activated_.add(std::move(observer)); }
  void activate(platform::RunningApplication const& application) override;
  void activateSelf() override;
  std::optional<platform::BundleInformation> bundleAt(std::string const& path) override;
  bool openUrl(std::string const& url) override;

  /// The user turns to `application` (or to none).
  void userActivates(std::optional<platform::RunningApplication> application);

  std::vector<platform::RunningApplication> running;
  std::map<std::string, platform::BundleInformation> bundles;
  std::vector<platform::RunningApplication> activated;
  std::vector<std::string> openedUrls;

 private:
  Journal& journal_;
  platform::RunningApplication self_;
  std::optional<platform::RunningApplication> front_;
  ObserverList<> activated_;
};

}  // namespace morla::fake
