#pragma once

#include <optional>
#include <string>
#include <utility>

#include "applescript/AppleEvent.h"
#include "applescript/Host.h"
#include "privacy/PermissionStore.h"

namespace morla::linux {

/// Asks the user whether this program may control an application.
class ConsentPrompt {
 public:
  virtual ~ConsentPrompt() = default;

  /// Any thread but the main one; waits for the user as long as it takes. The decision is stored when this returns;
  /// undecided when there was no answer.
  [[nodiscard]] virtual privacy::Permission ask(privacy::PermissionQuestion const& question,
                                                applescript::ApplicationInformation const& target) = 0;
};

/// The automation permission, checked at every entry of a `tell` and every event: the user may take it back at any
/// time. Any thread.
class AutomationGate {
 public:
  /// `client`: this program's identifier. Without `prompt` nobody can be asked, and what is undecided is not done.
  AutomationGate(privacy::PermissionStore store, std::string client, ConsentPrompt* prompt)
      : store_(std::move(store)), client_(std::move(client)), prompt_(prompt) {}

  /// Nothing when scripts may talk to `target`; else -1743 (refused) or -1744 (undecided, and no answer). May wait for
  /// the user, before anything is sent: no event's time limit runs meanwhile.
  [[nodiscard]] std::optional<applescript::EventError> check(applescript::ApplicationInformation const& target) const;

 private:
  privacy::PermissionStore store_;
  std::string client_;
  ConsentPrompt* prompt_;
};

}  // namespace morla::linux
