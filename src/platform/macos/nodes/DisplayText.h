#pragma once

#include <string>
#include <string_view>

namespace morla::macos {

/// What can be shown of `text`, as well-formed UTF-8: a byte of no well-formed sequence is a replacement character,
/// control characters are left out, line breaks excepted.
[[nodiscard]] std::string displayable(std::string_view text);

}  // namespace morla::macos
