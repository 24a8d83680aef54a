#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morla::unicode {

/// A byte of no well-formed sequence travels as the code point kIllFormedByte + byte, beyond all of Unicode: no table
/// knows it, so every rule leaves it alone, and it is written back as the byte that it was.
constexpr char32_t kIllFormedByte = 0x110000;

struct DecodedCodePoint {
  char32_t codePoint;
  std::size_t length;  ///< in bytes
};

/// The first code point of `text`, which is not empty.
[[nodiscard]] DecodedCodePoint decodeFirst(std::string_view text);

void appendCodePoint(std::string& out, char32_t codePoint);

[[nodiscard]] constexpr bool isAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

/// How many ASCII bytes `text` begins with.
[[nodiscard]] std::size_t asciiPrefixLength(std::string_view text);

}  // namespace morla::unicode
