#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "applescript/Host.h"
#include "platform/linux/scripting/ApplicationFinder.h"
#include "platform/linux/scripting/AutomationGate.h"
#include "platform/linux/scripting/ScriptFiles.h"
#include "scriptingbus/AppleEventClient.h"

namespace morla::linux {

/// What all scripts of one program share. Any thread.
struct ScriptingServices {
  ScriptingServices(Bundles bundles, privacy::PermissionStore permissions, std::string ownIdentifier,
                    ConsentPrompt* prompt)
      : finder(directory, std::move(bundles)), gate(std::move(permissions), std::move(ownIdentifier), prompt) {}

  scriptingbus::ConnectionPool pool;
  scriptingbus::ApplicationDirectory directory{pool};
  scriptingbus::AppleEventClient events{pool};
  ApplicationFinder finder;
  AutomationGate gate;
};

/// The world as one run of a script sees it: applications over the session bus, with the user's permission; commands of
/// the shell; files.
class ScriptHost final : public applescript::Host {
 public:
  /// `log` gets the lines of the script's `log` command; null drops them.
  explicit ScriptHost(ScriptingServices& services, std::function<void(std::string const&)> log = nullptr)
      : services_(services), log_(std::move(log)) {}

  [[nodiscard]] std::optional<applescript::ApplicationInformation> locate(
      applescript::ApplicationReference const& reference) override;
  [[nodiscard]] bool isRunning(applescript::ApplicationReference const& reference) override;
  /// The running application's own, else the one in its bundle.
  [[nodiscard]] std::shared_ptr<applescript::Dictionary const> dictionary(
      applescript::ApplicationInformation const& application) override;
  [[nodiscard]] std::optional<applescript::EventError> enterTell(
      applescript::ApplicationInformation const& application) override;
  [[nodiscard]] applescript::EventReply send(applescript::ApplicationInformation const& application,
                                             applescript::AppleEvent const& event) override;
  [[nodiscard]] applescript::ShellResult runShell(std::string const& command) override;
  void log(std::string const& line) override;
  [[nodiscard]] FileKind fileKindAt(std::string const& posixPath) override;
  LocalTime now() override;
  void wait(std::chrono::milliseconds duration) override;
  std::string homeFolder() override;
  [[nodiscard]] applescript::HostFiles* files() override;
  [[nodiscard]] std::optional<std::string> environmentVariable(std::string const& name) override;

 private:
  ScriptingServices& services_;
  std::function<void(std::string const&)> log_;
  ScriptFiles files_;
  scriptingbus::KnownOwners owners_;
  /// The identifiers of those that have answered since their `tell` was entered. One that ends then has been ended by
  /// somebody, and the rest of the block must not start it again.
  std::set<std::string> answered_;
};

}  // namespace morla::linux
