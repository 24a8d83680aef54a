#pragma once

#include <cstddef>
#include <string_view>

namespace morla::linux {

/// Both count from 1; a column is a code point.
struct SourcePosition {
  std::size_t line = 1;
  std::size_t column = 1;
  friend bool operator==(SourcePosition, SourcePosition) = default;
};

/// Where the byte at `offset` is; the end when the text is shorter. Lines end with LF, CR or CR LF.
[[nodiscard]] SourcePosition positionIn(std::string_view source, std::size_t offset);

}  // namespace morla::linux
