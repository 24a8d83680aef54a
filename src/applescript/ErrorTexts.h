#pragma once

#include <cstdint>
#include <string>

namespace morla::applescript {

/// What an error of this number says when nobody has given it a text: that of Apple's published lists of errors,
/// without the names of what it is about.
[[nodiscard]] std::string errorText(std::int64_t number);

}  // namespace morla::applescript
