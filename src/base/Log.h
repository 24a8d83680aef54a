#pragma once

#include <string_view>

namespace morla {

/// Writes `line` and an end of line to standard output as it stands, flushed, also into a pipe. Main thread.
/// For lines whose words are fixed; foreign text in them is not escaped.
void logVerbatim(std::string_view line);

/// A diagnostic line of our own: "[component] message", one line whatever foreign text the message holds.
void log(std::string_view component, std::string_view message);

}  // namespace morla
