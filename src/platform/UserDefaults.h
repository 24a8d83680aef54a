#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/Json.h"

namespace morla::platform {

using DefaultsValue = std::variant<bool, std::int64_t, double, std::string>;
using DefaultsEntry = std::pair<std::string, DefaultsValue>;

[[nodiscard]] Json toJson(DefaultsValue const& value);

/// The user's settings under flat keys. Typed: a value of another type counts as absent, so that nothing is ever
/// guessed from a file that somebody edited. Written through at once; a kill at any moment leaves the old or the new
/// value. A write that fails (full disk, read-only folder) is reported in one diagnostic line and holds for this run.
/// Main thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;
  /// Also a number without fraction that fits.
  [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;
  /// Also an integer. A number that is not finite counts as absent.
  [[nodiscard]] std::optional<double> number(std::string_view key) const;
  [[nodiscard]] std::optional<std::string> text(std::string_view key) const;
  /// Whether there is a value of any type.
  [[nodiscard]] bool hasValue(std::string_view key) const { return value(key).has_value(); }

  void set(std::string_view key, DefaultsValue value) { set({{std::string(key), std::move(value)}}); }
  /// A literal would otherwise become a boolean.
  void set(std::string_view key, char const* value) { set(key, DefaultsValue(std::string(value))); }
  /// Several keys in one write.
  void set(std::vector<DefaultsEntry> entries);

  /// The value under `key`, whatever its type.
  [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;

 protected:
  virtual void store(std::vector<DefaultsEntry> const& entries) = 0;
};

}  // namespace morla::platform
