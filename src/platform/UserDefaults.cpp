#include "platform/UserDefaults.h"

#include <cmath>

#include "base/MainThread.h"
#include "base/Trace.h"

namespace morla::platform {
namespace {

template <typename T>
std::optional<T> as(std::optional<DefaultsValue> const& value) {
  if (!value) return std::nullopt;
  if (auto const* held = std::get_if<T>(&*value)) return *held;
  return std::nullopt;
}

}  // namespace

Json toJson(DefaultsValue const& value) {
  return std::visit([](auto const& held) { return Json(held); }, value);
}

std::optional<bool> UserDefaults::boolean(std::string_view key) const {
  return as<bool>(value(key));
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
  auto const held = value(key);
  if (auto const exact = as<std::int64_t>(held)) return exact;
  auto const real = as<double>(held);
  // 2^63 is the first double beyond the range; the comparison is false for what is not a number.
  constexpr double kLimit = 9223372036854775808.0;
  if (!real || !(*real >= -kLimit && *real < kLimit) || std::trunc(*real) != *real) return std::nullopt;
  return static_cast<std::int64_t>(*real);
}

std::optional<double> UserDefaults::number(std::string_view key) const {
  auto const held = value(key);
  if (auto const whole = as<std::int64_t>(held)) return static_cast<double>(*whole);
  auto const real = as<double>(held);
  return real && std::isfinite(*real) ? real : std::nullopt;
}

std::optional<std::string> UserDefaults::text(std::string_view key) const {
  return as<std::string>(value(key));
}

void UserDefaults::set(std::vector<DefaultsEntry> entries) {
  assertIsMainThread();
  store(entries);
  auto* trace = Trace::active();
  if (trace == nullptr) return;
  for (auto const& [key, value] : entries) trace->line({{"default", Json(key)}, {"value", toJson(value)}});
}

}  // namespace morla::platform
