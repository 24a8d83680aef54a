#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "applescript/Host.h"
#include "applescript/Terminology.h"

namespace morla::applescript {

/// An application that a script names. It is looked for only once somebody needs to talk to it or to know its terms.
struct TargetApplication {
  ApplicationReference reference;
  std::optional<ApplicationInformation> information;
  std::unique_ptr<Terminology const> terms;  ///< null when it has none

  /// How messages to people call it.
  [[nodiscard]] std::string const& displayName() const { return information ? information->name : reference.text; }
};

/// The applications of one run, one entry for each way of naming one.
class Applications {
 public:
  explicit Applications(Host& host) : host_(&host) {}

  [[nodiscard]] std::shared_ptr<TargetApplication> named(ApplicationReference const& reference);

  /// Looks for the application and its terms, once; false when it cannot be found.
  [[nodiscard]] bool locate(TargetApplication& application);

  // The name in any application met so far.
  [[nodiscard]] std::optional<std::string> enumeratorName(Code code) const;
  [[nodiscard]] std::optional<std::string> className(Code code) const;
  [[nodiscard]] std::optional<std::string> propertyName(Code code) const;

 private:
  Host* host_;
  std::vector<std::shared_ptr<TargetApplication>> entries_;
};

}  // namespace morla::applescript
