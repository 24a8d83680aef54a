#pragma once

#include <string>

#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace morla::scriptingbus::testing {

/// The toy library as an installed application of a user of its own: a bus that can start it, a home folder with its
/// bundle, a data folder for the permissions. The environment of this process says so while it lives.
class InstalledToy {
 public:
  static constexpr char kBusName[] = "com.example.toy";

  InstalledToy();

  [[nodiscard]] support::PrivateBus const& bus() const { return bus_; }
  [[nodiscard]] support::TemporaryFolder const& home() const { return home_; }
  /// "allow", "deny" or "undecided", for MORLA.
  void decide(std::string const& permission) const;

 private:
  support::PrivateBus bus_;
  support::TemporaryFolder home_;
  support::EnvironmentVariable homeVariable_;
};

}  // namespace morla::scriptingbus::testing
