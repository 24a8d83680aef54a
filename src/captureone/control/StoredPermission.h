#pragma once

#include <string>
#include <utility>

#include "captureone/control/AutomationPermission.h"
#include "privacy/PermissionStore.h"

namespace morla::captureone {

/// The decision about MORLA and this application in the user's store of permissions.
class StoredPermission final : public AutomationPermission {
 public:
  StoredPermission(privacy::PermissionStore store, std::string target)
      : store_(std::move(store)),
        question_{privacy::PermissionQuestion::Service::automation, "app.morla.MORLA", std::move(target)} {}

  [[nodiscard]] Automation read() const override {
    switch (store_.get(question_)) {
      case privacy::Permission::allow:
        return Automation::allow;
      case privacy::Permission::deny:
        return Automation::deny;
      case privacy::Permission::undecided:
        break;
    }
    return Automation::undecided;
  }

  bool write(Automation decision) override {
    auto const permission = decision == Automation::allow  ? privacy::Permission::allow
                            : decision == Automation::deny ? privacy::Permission::deny
                                                           : privacy::Permission::undecided;
    return !store_.set(question_, permission);
  }

  [[nodiscard]] std::string const& path() const { return store_.path(); }

 private:
  privacy::PermissionStore store_;
  privacy::PermissionQuestion question_;
};

}  // namespace morla::captureone
