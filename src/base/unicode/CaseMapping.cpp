#include "base/unicode/TableLookup.h"
#include "base/unicode/Unicode.h"
#include "base/unicode/Utf8.h"

namespace morla::unicode {
namespace {

constexpr char lowercasedAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr char uppercasedAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

void appendMapped(std::string& out, char32_t codePoint, CaseTable const& table) {
  if (auto const* range = findRange(table.ranges, codePoint)) {
    if ((codePoint - range->first) % range->step == 0) {
      appendCodePoint(out, static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + range->delta));
      return;
    }
  }
  if (auto const* expansion = findMapping(table.expansions, codePoint)) {
    forEachTarget(*expansion, [&](char32_t target) { appendCodePoint(out, target); });
    return;
  }
  appendCodePoint(out, codePoint);
}

template <typename MapAscii>
std::string mapped(std::string_view text, MapAscii const& mapAscii, CaseTable const& table) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    if (isAscii(text.front())) {
      out += mapAscii(text.front());
      text.remove_prefix(1);
      continue;
    }
    auto const [codePoint, length] = decodeFirst(text);
    appendMapped(out, codePoint, table);
    text.remove_prefix(length);
  }
  return out;
}

}  // namespace

std::string lowercased(std::string_view text) {
  return mapped(text, lowercasedAscii, kLowercase);
}

std::string uppercased(std::string_view text) {
  return mapped(text, uppercasedAscii, kUppercase);
}

std::string caseFolded(std::string_view text) {
  return mapped(text, lowercasedAscii, kCaseFolding);
}

}  // namespace morla::unicode
