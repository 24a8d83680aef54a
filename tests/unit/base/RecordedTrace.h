#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "base/Trace.h"

namespace morla {

/// An active trace that keeps its lines, with a clock that stands where the test puts it.
struct RecordedTrace {
  std::vector<std::string> lines;
  std::chrono::milliseconds now{0};
  Trace trace{[this](std::string const& line) { lines.push_back(line); }, [this] { return now; }};
};

}  // namespace morla
