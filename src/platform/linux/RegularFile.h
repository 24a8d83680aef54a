#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>

namespace morla::linux {

struct FileText {
  std::optional<std::string> text;  ///< none: there is no such file, or `problem` says why it could not be read
  std::string problem;              ///< "Permission denied"
};

/// Reads a file that somebody else has put there. Never waits, as opening a pipe for reading would: what is no regular
/// file is a problem. At most the first `limit` bytes. Any thread.
[[nodiscard]] FileText readRegularFile(std::string const& path,
                                       std::size_t limit = std::numeric_limits<std::size_t>::max());

}  // namespace morla::linux
