#include "platform/linux/scripting/AutomationGate.h"

namespace morla::linux {

using applescript::ApplicationInformation;
using applescript::EventError;
namespace errors = applescript::errors;

std::optional<EventError> AutomationGate::check(ApplicationInformation const& target) const {
  privacy::PermissionQuestion const question{privacy::PermissionQuestion::Service::automation, client_,
                                             target.identifier};
  auto permission = store_.get(question);
  if (permission == privacy::Permission::undecided && prompt_ != nullptr) permission = prompt_->ask(question, target);
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

}  // namespace morla::linux
