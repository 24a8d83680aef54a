#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "applescript/Datum.h"

namespace morla::applescript {

/// What a person reads from a calendar and a clock. `weekday`: 1 is Sunday.
struct DateParts {
  std::int64_t year = 1970;
  std::int64_t month = 1;
  std::int64_t day = 1;
  std::int64_t hours = 0;
  std::int64_t minutes = 0;
  std::int64_t seconds = 0;
  std::int64_t weekday = 5;
};

/// Dates between the years 1 and 9999; `secondsOf` answers nothing for another one. Parts beyond their range carry
/// over, so that February 30 is in March.
[[nodiscard]] DateParts partsOf(std::int64_t seconds);
[[nodiscard]] std::optional<std::int64_t> secondsOf(DateParts const& parts);
[[nodiscard]] bool isDateInRange(double seconds);

/// In the format of the United States: "Saturday, November 21, 2026 at 11:17:52 PM".
[[nodiscard]] std::string dateText(Date const& date);
[[nodiscard]] std::string isoText(std::int64_t seconds);  ///< "2026-11-21T23:17:52"
[[nodiscard]] std::string dateString(std::int64_t seconds);
[[nodiscard]] std::string shortDateString(std::int64_t seconds);
[[nodiscard]] std::string timeString(std::int64_t seconds);

/// Reads what dateText() writes, parts of it, "11/21/2026", "21 November 2026" and "2026-11-21 23:17:52". A time alone
/// is of the day of `today`. Nothing when it is no date.
[[nodiscard]] std::optional<std::int64_t> parseDate(std::string_view text, std::int64_t today);
/// The same, but what `text` leaves out is that of `base`, the time of day as well.
[[nodiscard]] std::optional<std::int64_t> parseRelativeDate(std::string_view text, std::int64_t base);

/// English names; 1 is January, 1 is Sunday.
[[nodiscard]] std::string_view monthName(std::int64_t month);
[[nodiscard]] std::string_view weekdayName(std::int64_t weekday);

}  // namespace morla::applescript
