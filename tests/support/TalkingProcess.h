#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/LineReader.h"

namespace morla::support {

/// A child that takes lines on its standard input and answers with lines on its standard output.
class TalkingProcess {
 public:
  explicit TalkingProcess(std::vector<std::string> arguments);

  [[nodiscard]] pid_t processIdentifier() const { return process_.processIdentifier(); }

  void writeLine(std::string const& line) const;
  /// Reads lines until one begins with `prefix`; the rest of that line. Nothing when it ends, or falls silent, first.
  std::optional<std::string> readUntil(std::string const& prefix);
  /// Asks it to end by closing its standard input, and waits for that.
  void finish();

 private:
  ChildProcess process_;
  FileDescriptor input_;
  LineReader output_;
};

}  // namespace morla::support
