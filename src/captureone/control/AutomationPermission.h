#pragma once

#include <optional>
#include <string_view>

namespace morla::captureone {

enum class Automation { allow, deny, undecided };

[[nodiscard]] constexpr std::string_view textOf(Automation decision) {
  switch (decision) {
    case Automation::allow:
      return "allow";
    case Automation::deny:
      return "deny";
    case Automation::undecided:
      return "undecided";
  }
  return "";
}

[[nodiscard]] constexpr std::optional<Automation> automationFrom(std::string_view text) {
  for (auto const each : {Automation::allow, Automation::deny, Automation::undecided}) {
    if (text == textOf(each)) return each;
  }
  return {};
}

/// Whether MORLA may send Apple events to this application, as the desktop keeps it. The simulator never asks before it
/// answers: that is the sender's business.
class AutomationPermission {
 public:
  virtual ~AutomationPermission() = default;

  /// Asked each time, since others decide as well.
  [[nodiscard]] virtual Automation read() const = 0;
  /// False when the decision cannot be kept.
  virtual bool write(Automation decision) = 0;
};

}  // namespace morla::captureone
