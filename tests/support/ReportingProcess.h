#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/LineReader.h"

namespace morla::support {

/// A child that reports on a descriptor of its own, "{report}" in its arguments, where a server says for instance that
/// it is ready. What it prints goes to `output` (both streams), or with -1 where this program's own goes.
class ReportingProcess {
 public:
  ReportingProcess() = default;
  explicit ReportingProcess(std::vector<std::string> arguments, int output = -1);

  std::optional<std::string> readReport() { return reports_.next(); }
  void end() { process_.end(); }
  void killNow() { process_.killNow(); }

 private:
  ReportingProcess(std::vector<std::string> arguments, int output, Pipe reports);

  ChildProcess process_;
  LineReader reports_;
};

}  // namespace morla::support
