#include "base/unicode/Utf8.h"

#include <algorithm>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

/// How a sequence starts: its length, and the lowest code point that needs so many bytes.
struct Lead {
  std::size_t length;
  unsigned bits;
  char32_t lowest;
};

constexpr Lead leadOf(unsigned byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {2, byte & 0x1F, 0x80};
  if (byte >= 0xE0 && byte <= 0xEF) return {3, byte & 0x0F, 0x800};
  if (byte >= 0xF0 && byte <= 0xF4) return {4, byte & 0x07, 0x10000};
  return {0, 0, 0};
}

constexpr bool isScalarValue(char32_t codePoint) {
  return codePoint < 0xD800 || (codePoint > 0xDFFF && codePoint <= 0x10FFFF);
}

constexpr char continuation(char32_t codePoint, unsigned shift) {
  return static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F));
}

}  // namespace

DecodedCodePoint decodeFirst(std::string_view text) {
  unsigned const head = static_cast<unsigned char>(text.front());
  if (head < 0x80) return {head, 1};

  DecodedCodePoint const illFormed{kIllFormedByte + head, 1};
  Lead const lead = leadOf(head);
  if (lead.length == 0 || text.size() < lead.length) return illFormed;
  char32_t codePoint = lead.bits;
  for (std::size_t i = 1; i < lead.length; ++i) {
    unsigned const byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return illFormed;
    codePoint = codePoint << 6 | (byte & 0x3F);
  }
  if (codePoint < lead.lowest || !isScalarValue(codePoint)) return illFormed;
  return {codePoint, lead.length};
}

void appendCodePoint(std::string& out, char32_t codePoint) {
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    out += {static_cast<char>(0xC0 | codePoint >> 6), continuation(codePoint, 0)};
  } else if (codePoint < 0x10000) {
    out += {static_cast<char>(0xE0 | codePoint >> 12), continuation(codePoint, 6), continuation(codePoint, 0)};
  } else if (codePoint < kIllFormedByte) {
    out += {static_cast<char>(0xF0 | codePoint >> 18), continuation(codePoint, 12), continuation(codePoint, 6),
            continuation(codePoint, 0)};
  } else {
    out += static_cast<char>(codePoint - kIllFormedByte);
  }
}

std::size_t asciiPrefixLength(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, isAscii) - text.begin());
}

bool isWellFormed(std::string_view text) {
  text.remove_prefix(asciiPrefixLength(text));
  while (!text.empty()) {
    auto const [codePoint, length] = decodeFirst(text);
    if (codePoint >= kIllFormedByte) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace morla::unicode
