#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "base/Trace.h"

namespace morla::linux {

/// Collects the diagnostic lines while it lives.
class DiagnosticLines {
 public:
  [[nodiscard]] std::vector<std::string> const& get() const { return lines_; }

 private:
  std::vector<std::string> lines_;
  Trace trace_{[this](std::string const& line) {
                 if (line.find("\"log\"") != std::string::npos) lines_.push_back(line);
               },
               [] { return std::chrono::milliseconds(0); }};
};

}  // namespace morla::linux
