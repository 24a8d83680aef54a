#pragma once

#include <cstdint>
#include <string_view>

/// Keys by where they are: X has names for them, macOS has numbers.
namespace morla::linux {

/// A key that no Mac has.
inline constexpr std::uint16_t kNoMacKey = 0xFFFF;

/// `name`: what XKB calls the key ("AC01"), whatever is printed on it. `kNoMacKey` for keys that no Mac has.
[[nodiscard]] std::uint16_t macKeyCode(std::string_view name);

/// What macOS says that a key types where that is not what X says: private-use characters for arrows, function keys and
/// their like, control characters for a few others (UTF-8). Empty for every other key.
[[nodiscard]] std::string_view macCharacters(std::uint16_t macKeyCode, bool withShift);

}  // namespace morla::linux
