#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "applescript/Host.h"
#include "captureone/scripting/ObjectModel.h"

namespace morla::bench {

/// The status script with its target, as the program sends it.
[[nodiscard]] std::string statusScript();

/// The simulated Capture One in this process, without a bus or a window, as the only application there is.
class CaptureOneInProcess final : public applescript::Host {
 public:
  CaptureOneInProcess();

  [[nodiscard]] std::optional<applescript::ApplicationInformation> locate(
      applescript::ApplicationReference const& reference) override;
  [[nodiscard]] bool isRunning(applescript::ApplicationReference const& reference) override;
  [[nodiscard]] std::shared_ptr<applescript::Dictionary const> dictionary(
      applescript::ApplicationInformation const& application) override;
  [[nodiscard]] std::optional<applescript::EventError> enterTell(
      applescript::ApplicationInformation const& application) override;
  [[nodiscard]] applescript::EventReply send(applescript::ApplicationInformation const& application,
                                             applescript::AppleEvent const& event) override;
  [[nodiscard]] applescript::ShellResult runShell(std::string const& command) override;
  [[nodiscard]] LocalTime now() override;
  void wait(std::chrono::milliseconds duration) override;
  [[nodiscard]] std::string homeFolder() override;
  [[nodiscard]] FileKind fileKindAt(std::string const& posixPath) override;

  [[nodiscard]] captureone::ObjectModel& objects() { return objects_; }
  /// When set, every event that is sent is kept there.
  std::vector<applescript::AppleEvent>* record = nullptr;

 private:
  captureone::ApplicationIdentity identity_;
  captureone::Model model_;
  captureone::ObjectModel objects_;
  std::shared_ptr<applescript::Dictionary const> dictionary_;
};

/// The events of one round of the status script, in order. Ends the program when the script does not answer as it does
/// with a camera.
[[nodiscard]] std::vector<applescript::AppleEvent> eventsOfARound();

}  // namespace morla::bench
