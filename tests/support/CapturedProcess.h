#pragma once

#include <future>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace morla::support {

struct Finished {
  int status = -1;  ///< as ChildProcess::wait gives it
  std::string output;
  std::string errors;
};

/// A child whose output is kept.
class CapturedProcess {
 public:
  explicit CapturedProcess(std::vector<std::string> arguments);

  /// Waits for its end. Once.
  [[nodiscard]] Finished finish();

 private:
  // Both are read at once, so that a program that writes much to one of them is not held up. Declared before the
  // process: its end lets them end.
  std::future<std::string> output_;
  std::future<std::string> errors_;
  ChildProcess process_;
};

}  // namespace morla::support
