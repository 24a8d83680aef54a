#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "applescript/AppleEvent.h"
#include "applescript/Host.h"
#include "privacy/PermissionStore.h"

namespace morla::linux {

/// Asks the user whether this program may control an application. Nothing implements it so far: the window that asks
/// is still to come, and until then the decision is made in the store alone.
class ConsentPrompt {
 public:
  enum class Answer { allowed, refused, none };
  virtual ~ConsentPrompt() = default;

  /// Any thread but the main one; waits for the user. `none`: closed without an answer.
  [[nodiscard]] virtual Answer ask(applescript::ApplicationInformation const& target) = 0;
};

/// The automation permission, checked at every entry of a `tell` and every event: the user may take it back at any
/// time. Any thread.
class AutomationGate {
 public:
  /// `client`: this program's identifier. Without `prompt` nobody can be asked, and what is undecided is not done.
  AutomationGate(privacy::PermissionStore store, std::string client, ConsentPrompt* prompt)
      : store_(std::move(store)), client_(std::move(client)), prompt_(prompt) {}

  /// Nothing when scripts may talk to `target`; else -1743 (refused) or -1744 (undecided, and no answer).
  [[nodiscard]] std::optional<applescript::EventError> check(applescript::ApplicationInformation const& target);

 private:
  [[nodiscard]] privacy::Permission askUser(privacy::PermissionQuestion const& question,
                                            applescript::ApplicationInformation const& target);

  privacy::PermissionStore store_;
  std::string client_;
  ConsentPrompt* prompt_;
  std::mutex asking_;
};

}  // namespace morla::linux
