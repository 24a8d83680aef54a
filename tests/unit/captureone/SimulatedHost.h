#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "applescript/Interpreter.h"
#include "captureone/EmbeddedDictionary.h"
#include "captureone/scripting/EventGate.h"
#include "captureone/scripting/ObjectModel.h"
#include "support/TemporaryFolder.h"

namespace morla::captureone {

/// A script of the program, or the part of one, by the name of its file.
[[nodiscard]] std::string part(std::string const& name);

/// A machine on which scripts meet the simulated application without a bus in between: the interpreter on one side, the
/// gate with its faults and the object model on the other. Shell commands are run; the temporary folder of the system
/// that they name is one of the test's own.
class SimulatedHost final : public applescript::Host {
 public:
  explicit SimulatedHost(Surroundings surroundings = {}) : model(std::move(surroundings)) {}

  /// "value: …", "no value", "no text" or "error: …", for short comparisons.
  std::string outcomeOf(std::string const& source) {
    auto const outcome = applescript::run(source, *this, delimiters);
    message = outcome.failure ? outcome.failure->message : std::string();
    if (outcome.failure) return "error: " + std::to_string(outcome.failure->number);
    if (!outcome.result) return "no value";
    auto const text = applescript::stringValue(*outcome.result);
    return text ? "value: " + *text : "no text";
  }

  [[nodiscard]] std::filesystem::path temporary(std::string const& name) const { return folder_ / name; }

  std::optional<applescript::ApplicationInformation> locate(
      applescript::ApplicationReference const& reference) override {
    bool const isByName = reference.kind == applescript::ApplicationReference::Kind::name;
    if (!isInstalled || reference.text != (isByName ? identity.name : identity.busName)) return {};
    return applescript::ApplicationInformation{identity.name, identity.busName};
  }
  bool isRunning(applescript::ApplicationReference const& reference) override { return running && locate(reference); }
  std::shared_ptr<applescript::Dictionary const> dictionary(applescript::ApplicationInformation const&) override {
    return std::make_shared<applescript::Dictionary const>(objects.terms().dictionary());
  }
  std::optional<applescript::EventError> enterTell(applescript::ApplicationInformation const&) override {
    if (!isTellRefused) return {};
    return applescript::EventError{applescript::errors::kNotPermitted, "", {}};
  }

  applescript::EventReply send(applescript::ApplicationInformation const&,
                               applescript::AppleEvent const& event) override {
    if (!running) ++launches;
    running = true;
    std::optional<applescript::EventReply> reply;
    gate.handle(event, [&reply](applescript::EventReply answer) { reply = std::move(answer); });
    if (!reply) return applescript::EventError{applescript::errors::kConnectionInvalid, "", {}};
    return *std::move(reply);
  }

  applescript::ShellResult runShell(std::string const& command) override;
  LocalTime now() override { return {}; }
  void wait(std::chrono::milliseconds) override {}
  std::string homeFolder() override { return "/Users/me"; }
  FileKind fileKindAt(std::string const& posixPath) override;

  ApplicationIdentity const identity;
  Model model;
  ObjectModel objects{model, identity, kDictionary, {}};
  EventGate gate{model,
                 [this](auto const& event) { return objects.handle(event); },
                 {[](auto, auto then) { then(); }, [this] { running = false; }}};
  bool isInstalled = true;
  bool running = true;
  bool isTellRefused = false;
  int launches = 0;
  std::string message;  ///< of the last failure
  applescript::TextItemDelimiters delimiters{""};

 private:
  /// The system's temporary folder, where scripts put their own, stands for the test's.
  [[nodiscard]] std::string mapped(std::string text) const;
  [[nodiscard]] std::string mappedBack(std::string text) const;

  support::TemporaryFolder folder_;
};

}  // namespace morla::captureone
