#pragma once

#include <cstdint>
#include <string_view>

namespace morla::linux {

/// When the process was started, in clock ticks since the machine was: good for comparing. The largest value when there
/// is no such process, so that what cannot be placed comes last.
[[nodiscard]] std::uint64_t processStartTime(std::int64_t processIdentifier);

/// The same from the text of /proc/PID/stat. The program's name in it may hold anything, spaces and parentheses too.
[[nodiscard]] std::uint64_t startTimeInStat(std::string_view stat);

}  // namespace morla::linux
