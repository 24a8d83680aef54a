#include "applescript/TextElements.h"

#include <algorithm>
#include <array>

#include "applescript/Comparison.h"
#include "base/unicode/Unicode.h"

namespace morla::applescript {
namespace {

[[nodiscard]] bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80U;
}

/// How many bytes of punctuation beyond ASCII stand at `position`: dashes, quotation marks, no-break spaces, signs.
[[nodiscard]] std::size_t punctuationAt(std::string_view text, std::size_t position) {
  CodePoint const point = codePointAt(text, position);
  bool const isPunctuation = (point.value >= 0xA0 && point.value <= 0xBF && point.bytes > 1) ||
                             (point.value >= 0x2000 && point.value <= 0x206F);
  return isPunctuation ? point.bytes : 0;
}

/// A text and its comparable form, character by character.
struct Characters {
  std::vector<std::string_view> originals;
  std::vector<std::string> comparable;
};

[[nodiscard]] Characters charactersToCompare(std::string_view text, Considerations considerations) {
  Characters result{charactersOf(text), {}};
  result.comparable.reserve(result.originals.size());
  for (std::string_view const character : result.originals) {
    result.comparable.push_back(folded(character, considerations));
  }
  return result;
}

}  // namespace

std::vector<std::string_view> charactersOf(std::string_view text) {
  return unicode::graphemeClusters(text);
}

std::vector<std::string_view> wordsOf(std::string_view text) {
  auto const isWordAt = [text](std::size_t i) {
    return i < text.size() && isWordByte(text[i]) && punctuationAt(text, i) == 0;
  };
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < text.size()) {
    if (!isWordAt(i)) {
      i += std::max<std::size_t>(punctuationAt(text, i), 1);
      continue;
    }
    std::size_t const start = i;
    while (i < text.size()) {
      if (isWordAt(i)) {
        i += codePointAt(text, i).bytes;
        continue;
      }
      // An apostrophe or a full stop between two letters or digits is part of the word: "don't", "3.5".
      std::string_view const rest = text.substr(i);
      std::size_t const joint = rest.starts_with("\u2019") ? 3 : rest.front() == '\'' || rest.front() == '.' ? 1 : 0;
      if (joint == 0 || !isWordAt(i + joint)) break;
      i += joint;
    }
    words.push_back(text.substr(start, i - start));
  }
  return words;
}

std::vector<std::string_view> paragraphsOf(std::string_view text) {
  std::vector<std::string_view> paragraphs;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') continue;
    paragraphs.push_back(text.substr(start, i - start));
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  paragraphs.push_back(text.substr(start));
  return paragraphs;
}

std::vector<std::int64_t> codePointsOf(std::string_view text) {
  std::vector<std::int64_t> points;
  while (!text.empty()) {
    CodePoint const point = codePointAt(text, 0);
    points.push_back(static_cast<std::int64_t>(point.value));
    text.remove_prefix(point.bytes);
  }
  return points;
}

bool appendCodePoint(std::string& text, std::int64_t codePoint) {
  constexpr std::int64_t kLast = 0x10FFFF;
  if (codePoint < 0 || codePoint > kLast || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) return false;
  auto const point = static_cast<std::uint32_t>(codePoint);
  auto const add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (point < 0x80U) {
    add(point);
    return true;
  }
  unsigned const more = point < 0x800U ? 1 : point < 0x10000U ? 2 : 3;
  constexpr std::array<std::uint32_t, 4> kLeads{0, 0xC0U, 0xE0U, 0xF0U};
  add(kLeads[more] | point >> (6 * more));
  for (unsigned i = more; i-- > 0;) add(0x80U | (point >> (6 * i) & 0x3FU));
  return true;
}

std::string textOfUtf16(std::string_view bytes) {
  auto const unitAt = [bytes](std::size_t i, bool isLittleEndian) -> std::int64_t {
    auto const first = static_cast<unsigned char>(bytes[i]);
    auto const second = static_cast<unsigned char>(bytes[i + 1]);
    return isLittleEndian ? second * 256 + first : first * 256 + second;
  };
  bool const isLittleEndian = bytes.size() >= 2 && unitAt(0, true) == 0xFEFF;
  bool const hasMark = isLittleEndian || (bytes.size() >= 2 && unitAt(0, false) == 0xFEFF);
  std::string text;
  for (std::size_t i = hasMark ? 2 : 0; i + 1 < bytes.size(); i += 2) {
    std::int64_t point = unitAt(i, isLittleEndian);
    if (point >= 0xD800 && point <= 0xDBFF && i + 3 < bytes.size()) {
      std::int64_t const low = unitAt(i + 2, isLittleEndian);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        point = 0x10000 + (point - 0xD800) * 0x400 + (low - 0xDC00);
        i += 2;
      }
    }
    constexpr std::int64_t kReplacement = 0xFFFD;
    if (!appendCodePoint(text, point)) static_cast<void>(appendCodePoint(text, kReplacement));
  }
  return text;
}

std::string utf16Of(std::string_view text) {
  std::string bytes;
  auto const add = [&bytes](std::int64_t unit) {
    bytes += static_cast<char>(unit / 256);
    bytes += static_cast<char>(unit % 256);
  };
  for (std::int64_t const point : codePointsOf(text)) {
    if (point < 0x10000) {
      add(point);
    } else {
      add(0xD800 + (point - 0x10000) / 0x400);
      add(0xDC00 + (point - 0x10000) % 0x400);
    }
  }
  return bytes;
}

std::vector<std::string_view> textItemsOf(std::string_view text, std::vector<std::string> const& delimiters,
                                          Considerations considerations) {
  std::vector<std::vector<std::string>> separators;
  for (std::string const& delimiter : delimiters) {
    if (!delimiter.empty()) separators.push_back(charactersToCompare(delimiter, considerations).comparable);
  }
  if (separators.empty()) return charactersOf(text);
  Characters const characters = charactersToCompare(text, considerations);
  std::vector<std::string_view> items;
  std::size_t itemStart = 0;  // in bytes
  std::size_t offset = 0;     // of the character at `i`
  std::size_t const count = characters.comparable.size();
  for (std::size_t i = 0; i < count;) {
    std::size_t matched = 0;
    for (auto const& separator : separators) {
      if (i + separator.size() > count) continue;
      auto const at = characters.comparable.begin() + static_cast<std::ptrdiff_t>(i);
      if (!std::equal(separator.begin(), separator.end(), at)) continue;
      matched = separator.size();
      break;
    }
    if (matched == 0) {
      offset += characters.originals[i++].size();
      continue;
    }
    items.push_back(text.substr(itemStart, offset - itemStart));
    for (std::size_t const end = i + matched; i < end; ++i) offset += characters.originals[i].size();
    itemStart = offset;
  }
  items.push_back(text.substr(itemStart));
  return items;
}

}  // namespace morla::applescript
