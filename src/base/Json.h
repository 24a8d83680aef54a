#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace morla {

/// A finished piece of JSON text, so that text that must be quoted and text that already is cannot be mixed up.
/// Writing only: whoever reads JSON takes a library.
class Json {
 public:
  Json() = default;  ///< null
  explicit Json(bool value);
  explicit Json(std::int64_t value);
  explicit Json(int value) : Json(std::int64_t{value}) {}
  /// A number that JSON cannot hold (infinite, not a number) becomes null.
  explicit Json(double value);
  /// Bytes that are not UTF-8 are replaced by U+FFFD: a line that cannot be parsed is worth nothing to its reader.
  explicit Json(std::string_view value);
  explicit Json(std::string const& value) : Json(std::string_view(value)) {}
  explicit Json(char const* value) : Json(std::string_view(value)) {}

  template <typename T>
  explicit Json(std::optional<T> const& value) {
    if (value) *this = Json(*value);
  }
  template <typename T>
  explicit Json(std::vector<T> const& values) {
    text_ = "[";
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i > 0) text_ += ',';
      text_ += Json(values[i]).text();
    }
    text_ += ']';
  }
  template <typename T>
  explicit Json(std::set<T> const& values) : Json(std::vector<T>(values.begin(), values.end())) {}
  explicit Json(std::map<std::string, Json> const& object);

  [[nodiscard]] std::string const& text() const { return text_; }

 private:
  std::string text_ = "null";
};

/// How a value is told to a trace. An enumeration brings an overload of its own, found beside it.
template <typename T>
[[nodiscard]] Json toJson(T const& value) {
  return Json(value);
}

}  // namespace morla
