#include "base/Json.h"

#include <cmath>

#include "base/Decimal.h"

namespace morla {
namespace {

/// The length of the well-formed UTF-8 sequence at the start of `text`, or 0.
std::size_t sequenceLength(std::string_view text) {
  auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  auto const continues = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
    return i < text.size() && byte(i) >= low && byte(i) <= high;
  };
  unsigned const head = byte(0);
  if (head < 0x80) return 1;
  if (head >= 0xC2 && head <= 0xDF) return continues(1) ? 2 : 0;
  if (head >= 0xE0 && head <= 0xEF) {
    bool const second = continues(1, head == 0xE0 ? 0xA0 : 0x80, head == 0xED ? 0x9F : 0xBF);
    return second && continues(2) ? 3 : 0;
  }
  if (head >= 0xF0 && head <= 0xF4) {
    bool const second = continues(1, head == 0xF0 ? 0x90 : 0x80, head == 0xF4 ? 0x8F : 0xBF);
    return second && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

void appendControl(std::string& out, unsigned char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += "\\u00";
  out += kDigits[byte >> 4];
  out += kDigits[byte & 15];
}

std::string quoted(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    std::size_t const length = sequenceLength(text);
    auto const head = static_cast<unsigned char>(text[0]);
    if (length == 0) {
      out += "\xEF\xBF\xBD";
    } else if (head == '"' || head == '\\') {
      out += '\\';
      out += text[0];
    } else if (head == '\n') {
      out += "\\n";
    } else if (head == '\r') {
      out += "\\r";
    } else if (head == '\t') {
      out += "\\t";
    } else if (head < 0x20 || head == 0x7F) {
      appendControl(out, head);
    } else {
      out += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return out + '"';
}

}  // namespace

Json::Json(bool value) : text_(value ? "true" : "false") {}
Json::Json(std::int64_t value) : text_(std::to_string(value)) {}
Json::Json(double value) : text_(std::isfinite(value) ? shortestDecimal(value) : "null") {}
Json::Json(std::string_view value) : text_(quoted(value)) {}

Json::Json(std::map<std::string, Json> const& object) : text_("{") {
  for (bool first = true; auto const& [key, value] : object) {
    if (!first) text_ += ',';
    first = false;
    text_ += quoted(key) + ':' + value.text();
  }
  text_ += '}';
}

}  // namespace morla
