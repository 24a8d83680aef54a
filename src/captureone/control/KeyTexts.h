#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "base/Json.h"
#include "captureone/control/Controls.h"

/// Texts of keys and values, for the files that define keys.
namespace morla::captureone::keytexts {

/// Fit for a message: foreign bytes are made UTF-8.
inline std::string shown(std::string_view text) {
  return Json(text).text();
}

inline std::string textOf(bool value) {
  return value ? "true" : "false";
}

inline std::string textOf(double value) {
  std::array<char, 32> digits{};
  auto const end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  return {digits.data(), end.ptr};
}

template <typename Number>
std::optional<Number> parse(std::string const& text) {
  Number number{};
  auto const* end = text.data() + text.size();
  auto const result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return {};
  return number;
}

/// Calls `apply` with the number; `apply` returns whether the model took it.
template <typename Number, typename Apply>
Controls::Refusal withNumber(std::string const& text, std::string const& expected, Apply apply) {
  auto const number = parse<Number>(text);
  if (number && apply(*number)) return {};
  return "expected " + expected + ", not " + shown(text);
}

template <typename Apply>
Controls::Refusal withBoolean(std::string const& text, Apply apply) {
  if (text != "true" && text != "false") return "expected true or false, not " + shown(text);
  return apply(text == "true");
}

inline std::string upTo(std::string const& what, std::size_t maximum) {
  return what + " from 0 to " + std::to_string(maximum);
}

}  // namespace morla::captureone::keytexts
