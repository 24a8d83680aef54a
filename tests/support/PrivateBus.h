#pragma once

#include <string>

#include "support/EnvironmentVariable.h"
#include "support/ReportingProcess.h"
#include "support/TemporaryFolder.h"

namespace morla::support {

/// A session bus of this test alone, which is the session bus of the process while it lives. It can start what was
/// installed on it, and nothing of the machine's.
class PrivateBus {
 public:
  PrivateBus();

  /// The user's data folder (XDG_DATA_HOME) while it lives.
  [[nodiscard]] TemporaryFolder const& dataHome() const { return dataHome_; }
  /// Has the bus start `command` when `busName` is asked for.
  void installService(std::string const& busName, std::string const& command) const;
  /// The daemon dies as if it had crashed.
  void kill() { daemon_.killNow(); }

 private:
  TemporaryFolder dataHome_;
  EnvironmentVariable dataHomeVariable_;
  TemporaryFolder folder_;
  ReportingProcess daemon_;
  EnvironmentVariable addressVariable_;
};

}  // namespace morla::support
