#pragma once

#include <cstdint>
#include <string>

#include "platform/KeyEvents.h"

namespace morla::shortcuts {

/// How a key is called in a recorded chord: keys that type nothing to read have names, by their macOS key code; every
/// other is called by its characters, upper-case. Empty when it has none.
[[nodiscard]] std::string charFromEvent(platform::KeyEvent const& event, std::uint16_t keyCode);

inline constexpr std::uint16_t kDeleteKey = 51;
inline constexpr std::uint16_t kForwardDeleteKey = 117;
inline constexpr std::uint16_t kEscapeKey = 53;

}  // namespace morla::shortcuts
