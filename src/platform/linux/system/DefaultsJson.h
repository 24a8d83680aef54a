#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/UserDefaults.h"

/// The text of the defaults file: one flat JSON object. Only sources of this folder include this header.
namespace morla::linux {

struct ParsedDefaults {
  /// Every key that could be read, also those whose value is of a foreign type (null, array, object).
  nlohmann::json object = nlohmann::json::object();
  /// Why the text is no whole object; empty when it is one. The keys before the damage are in `object`.
  std::string damage;
};

[[nodiscard]] ParsedDefaults parseDefaults(std::string const& text);

/// Ends with a line feed, so that a person may look at it; bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string writtenDefaults(nlohmann::json const& object);

/// Nothing when `value` is of a type that defaults do not have.
[[nodiscard]] std::optional<platform::DefaultsValue> defaultsValue(nlohmann::json const& value);
/// Nothing when JSON has no such value (a number that is not finite).
[[nodiscard]] std::optional<nlohmann::json> jsonValue(platform::DefaultsValue const& value);

}  // namespace morla::linux
