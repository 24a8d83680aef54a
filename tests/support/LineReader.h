#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/linux/FileDescriptor.h"

namespace morla::support {

/// Reads what a child says, a line at a time.
class LineReader {
 public:
  LineReader() = default;
  explicit LineReader(linux::FileDescriptor from) : from_(std::move(from)) {}

  /// The next line without its end; waits for it. Nothing when the other side closes first, or says nothing for ten
  /// seconds.
  std::optional<std::string> next();

 private:
  linux::FileDescriptor from_;
  std::string rest_;
};

}  // namespace morla::support
