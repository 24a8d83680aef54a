#pragma once

#include <string>

#include "platform/KeyEvents.h"
#include "shortcuts/ChordMatcher.h"

/// Key events in few words.
namespace morla::shortcuts {

inline constexpr platform::ModifierFlags kNone{};

inline platform::KeyEvent down(std::string characters, platform::ModifierFlags flags = kNone,
                               std::uint16_t keyCode = 0) {
  return {platform::KeyEventType::down, keyCode, flags, std::move(characters), false};
}
inline platform::KeyEvent up(std::string characters, platform::ModifierFlags flags = kNone, std::uint16_t keyCode = 0) {
  return {platform::KeyEventType::up, keyCode, flags, std::move(characters), false};
}
inline platform::KeyEvent repeat(std::string characters, platform::ModifierFlags flags = kNone) {
  return {platform::KeyEventType::down, 0, flags, std::move(characters), true};
}
inline platform::KeyEvent flagsChanged(platform::ModifierFlags flags = kNone) {
  return {platform::KeyEventType::flagsChanged, 0, flags, "", false};
}

}  // namespace morla::shortcuts
