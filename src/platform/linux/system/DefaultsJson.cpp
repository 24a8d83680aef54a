#include "platform/linux/system/DefaultsJson.h"

#include <cmath>
#include <limits>
#include <utility>
#include <variant>
#include <vector>

namespace morla::linux {
namespace {

using nlohmann::json;

/// Deeper values are nobody's settings, and writing them back would recurse as deeply.
constexpr std::size_t kDepthLimit = 100;

/// Builds the object key by key, so that what was complete before the damage is kept.
class LeadingKeys final : public nlohmann::json_sax<json> {
 public:
  LeadingKeys(std::string const& text, ParsedDefaults& result) : text_(text), result_(result) {}

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override { return add(value); }
  bool number_float(number_float_t value, string_t const&) override { return add(value); }
  bool string(string_t& value) override { return add(std::move(value)); }
  bool binary(binary_t&) override { return damaged("binary value"); }
  bool start_object(std::size_t) override { return open(json::object()); }
  bool start_array(std::size_t) override { return open(json::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool key(string_t& name) override {
    keys_.back() = std::move(name);
    lastNumber_.reset();  // the comma between them has ended it
    return true;
  }

  bool parse_error(std::size_t position, std::string const&, nlohmann::detail::exception const& error) override {
    bool const endsHere = position >= text_.size();
    if (endsHere && lastNumber_ && endsWithinNumber()) result_.object.erase(*lastNumber_);
    std::string_view const text = error.what();
    auto const prefixEnd = text.find("] ");  // the library's own name for the error
    return damaged(std::string(prefixEnd == std::string_view::npos ? text : text.substr(prefixEnd + 2)));
  }

 private:
  bool damaged(std::string why) {
    result_.damage = std::move(why);
    return false;
  }

  /// "12" at the very end of a text that was cut off may have been "123".
  [[nodiscard]] bool endsWithinNumber() const {
    return !text_.empty() && std::string_view("0123456789+-.eE").find(text_.back()) != std::string_view::npos;
  }

  bool open(json container) {
    if (open_.empty() && !container.is_object()) return damaged("not an object");
    if (open_.size() >= kDepthLimit) return damaged("nested too deeply");
    lastNumber_.reset();
    open_.push_back(std::move(container));
    keys_.emplace_back();
    return true;
  }

  bool close() {
    auto closed = std::move(open_.back());
    open_.pop_back();
    keys_.pop_back();
    return open_.empty() || add(std::move(closed));
  }

  bool add(json value) {
    if (open_.empty()) return damaged("not an object");
    auto& container = open_.back();
    lastNumber_.reset();
    if (container.is_array()) {
      container.push_back(std::move(value));
    } else if (open_.size() > 1) {
      container[keys_.back()] = std::move(value);
    } else {
      if (value.is_number()) lastNumber_ = keys_.back();
      result_.object[keys_.back()] = std::move(value);
    }
    return true;
  }

  std::string const& text_;
  ParsedDefaults& result_;
  std::vector<json> open_;         ///< containers that have not ended; the outermost only stands for the result
  std::vector<std::string> keys_;  ///< the latest key of each
  std::optional<std::string> lastNumber_;
};

}  // namespace

ParsedDefaults parseDefaults(std::string const& text) {
  ParsedDefaults result;
  LeadingKeys handler(text, result);
  if (!json::sax_parse(text, &handler) && result.damage.empty()) result.damage = "not JSON";
  return result;
}

std::string writtenDefaults(json const& object) {
  return object.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

std::optional<platform::DefaultsValue> defaultsValue(json const& value) {
  switch (value.type()) {
    case json::value_t::boolean:
      return value.get<bool>();
    case json::value_t::number_integer:
      return value.get<std::int64_t>();
    case json::value_t::number_unsigned: {
      auto const whole = value.get<std::uint64_t>();
      if (whole > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        return static_cast<double>(whole);
      }
      return static_cast<std::int64_t>(whole);
    }
    case json::value_t::number_float:
      return value.get<double>();
    case json::value_t::string:
      return value.get<std::string>();
    default:
      return std::nullopt;
  }
}

std::optional<json> jsonValue(platform::DefaultsValue const& value) {
  if (auto const* real = std::get_if<double>(&value); real != nullptr && !std::isfinite(*real)) return std::nullopt;
  return std::visit([](auto const& held) { return json(held); }, value);
}

}  // namespace morla::linux
