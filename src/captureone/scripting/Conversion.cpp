#include "captureone/scripting/Conversion.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace morla::captureone {

using applescript::Alias;
using applescript::Enumerator;
using applescript::FileUrl;
using applescript::Value;

namespace {

template <typename T>
std::optional<T> parsed(std::string const& text) {
  T number{};
  auto const end = text.data() + text.size();
  auto const result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return {};
  return number;
}

std::optional<Value> toText(Value const& value) {
  if (value.as<std::string>() != nullptr) return value;
  if (auto const* integer = value.as<std::int64_t>()) return Value(std::to_string(*integer));
  if (auto const* truth = value.as<bool>()) return Value(*truth ? "true" : "false");
  if (auto const* real = value.as<double>()) {
    std::array<char, 32> digits{};
    auto const result = std::to_chars(digits.data(), digits.data() + digits.size(), *real);
    return Value(std::string(digits.data(), result.ptr));
  }
  return {};
}

std::optional<double> toNumber(Value const& value) {
  std::optional<double> number;
  if (auto const* integer = value.as<std::int64_t>()) number = static_cast<double>(*integer);
  if (auto const* real = value.as<double>()) number = *real;
  if (auto const* text = value.as<std::string>()) number = parsed<double>(*text);
  if (number && !std::isfinite(*number)) return {};
  return number;
}

std::optional<Value> toInteger(Value const& value) {
  if (value.as<std::int64_t>() != nullptr) return value;
  auto const number = toNumber(value);
  if (!number || std::abs(*number) > 9e15) return {};
  return Value(static_cast<std::int64_t>(std::nearbyint(*number)));
}

}  // namespace

std::optional<Value> convertTo(std::string_view type, Value const& value, Terms const& terms) {
  if (type == "any") return value;
  if (type == "text") return toText(value);
  if (type == "boolean") return value.as<bool>() != nullptr ? std::optional(value) : std::nullopt;
  if (type == "integer") return toInteger(value);
  if (type == "number") {
    auto const number = toNumber(value);
    return number ? std::optional(Value(*number)) : std::nullopt;
  }
  if (type == "file") {
    bool const isFile =
        value.as<FileUrl>() != nullptr || value.as<Alias>() != nullptr || value.as<std::string>() != nullptr;
    return isFile ? std::optional(value) : std::nullopt;
  }
  auto const* enumerator = value.as<Enumerator>();
  if (enumerator != nullptr && terms.hasEnumerator(type, enumerator->code)) return value;
  return {};
}

}  // namespace morla::captureone
