#include "platform/linux/scripting/AutomationGate.h"

namespace morla::linux {

using applescript::ApplicationInformation;
using applescript::EventError;
namespace errors = applescript::errors;

std::optional<EventError> AutomationGate::check(ApplicationInformation const& target) {
  privacy::PermissionQuestion const question{privacy::PermissionQuestion::Service::automation, client_,
                                             target.identifier};
  auto permission = store_.get(question);
  if (permission == privacy::Permission::undecided && prompt_ != nullptr) permission = askUser(question, target);
  switch (permission) {
    case privacy::Permission::allow:
      return std::nullopt;
    case privacy::Permission::deny:
      return EventError{errors::kNotPermitted, "Not authorized to send Apple events to " + target.name + ".", {}};
    case privacy::Permission::undecided:
      break;
  }
  return EventError{
      errors::kConsentPending, "The user has not decided yet about Apple events to " + target.name + ".", {}};
}

privacy::Permission AutomationGate::askUser(privacy::PermissionQuestion const& question,
                                            ApplicationInformation const& target) {
  std::lock_guard const lock(asking_);
  // Another script may have asked the same while this one waited for its turn.
  if (auto const decided = store_.get(question); decided != privacy::Permission::undecided) return decided;
  auto const answer = prompt_->ask(target);
  if (answer == ConsentPrompt::Answer::none) return privacy::Permission::undecided;
  auto const permission =
      answer == ConsentPrompt::Answer::allowed ? privacy::Permission::allow : privacy::Permission::deny;
  // A decision that cannot be stored still counts now; the user is asked again next time.
  static_cast<void>(store_.set(question, permission));
  return permission;
}

}  // namespace morla::linux
