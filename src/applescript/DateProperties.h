#pragma once

#include <optional>

#include "applescript/RunState.h"

namespace morla::applescript {

/// `year of d`, `time string of d` …; nothing when dates have no such property.
[[nodiscard]] std::optional<Datum> propertyOfDate(Date const& date, Code code);

/// False when dates have no such property that can be set; -1700 when `value` does not fit.
[[nodiscard]] bool setPropertyOfDate(Date const& date, Code code, Datum const& value, RunState& state);

/// 1 for January; nothing for what is no month.
[[nodiscard]] std::optional<std::int64_t> monthNumber(Datum const& month);
/// 1 for Sunday.
[[nodiscard]] std::optional<std::int64_t> weekdayNumber(Datum const& weekday);

}  // namespace morla::applescript
