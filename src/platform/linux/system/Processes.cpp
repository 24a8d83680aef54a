#include "platform/linux/system/Processes.h"

#include <charconv>
#include <fstream>
#include <limits>
#include <string>

namespace morla::linux {
namespace {

constexpr auto kUnknown = std::numeric_limits<std::uint64_t>::max();

}  // namespace

std::uint64_t startTimeInStat(std::string_view stat) {
  auto const nameEnd = stat.rfind(')');
  if (nameEnd == std::string_view::npos) return kUnknown;
  stat.remove_prefix(nameEnd + 1);
  // The name is field 2, the start time field 22.
  for (int field = 2; field < 22; ++field) {
    auto const space = stat.find(' ');
    if (space == std::string_view::npos) return kUnknown;
    stat.remove_prefix(space + 1);
  }
  std::uint64_t ticks = 0;
  auto const [end, error] = std::from_chars(stat.data(), stat.data() + stat.size(), ticks);
  return error == std::errc() && end != stat.data() ? ticks : kUnknown;
}

std::uint64_t processStartTime(std::int64_t processIdentifier) {
  if (processIdentifier <= 0) return kUnknown;
  std::ifstream file("/proc/" + std::to_string(processIdentifier) + "/stat");
  std::string text;
  std::getline(file, text, '\0');
  return startTimeInStat(text);
}

}  // namespace morla::linux
