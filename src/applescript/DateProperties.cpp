#include "applescript/DateProperties.h"

#include <array>

#include "applescript/Calendar.h"
#include "applescript/Coercion.h"
#include "applescript/ScriptError.h"

namespace morla::applescript {
namespace {

constexpr auto kMonths = std::to_array<std::string_view>(
    {"jan ", "feb ", "mar ", "apr ", "may ", "jun ", "jul ", "aug ", "sep ", "oct ", "nov ", "dec "});
constexpr auto kWeekdays = std::to_array<std::string_view>({"sun ", "mon ", "tue ", "wed ", "thu ", "fri ", "sat "});

template <std::size_t N>
[[nodiscard]] std::optional<std::int64_t> numberOf(std::array<std::string_view, N> const& codes, Datum const& datum) {
  auto const* enumerator = datum.as<Enumerator>();
  if (enumerator == nullptr) return std::nullopt;
  for (std::size_t i = 0; i < N; ++i) {
    if (enumerator->code == Code(codes[i])) return static_cast<std::int64_t>(i) + 1;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::int64_t> monthNumber(Datum const& month) {
  return numberOf(kMonths, month);
}

std::optional<std::int64_t> weekdayNumber(Datum const& weekday) {
  return numberOf(kWeekdays, weekday);
}

std::optional<Datum> propertyOfDate(Date const& date, Code code) {
  std::int64_t const moment = *date.seconds;
  DateParts const parts = partsOf(moment);
  if (code == "year"_code) return parts.year;
  if (code == "mnth"_code) return Enumerator{Code(kMonths[static_cast<std::size_t>(parts.month - 1)])};
  if (code == "day "_code) return parts.day;
  if (code == "wkdy"_code) return Enumerator{Code(kWeekdays[static_cast<std::size_t>(parts.weekday - 1)])};
  if (code == "hour"_code) return parts.hours;
  if (code == "min "_code) return parts.minutes;
  if (code == "seco"_code) return parts.seconds;
  if (code == "time"_code) return parts.hours * 3600 + parts.minutes * 60 + parts.seconds;
  if (code == "dstr"_code) return dateString(moment);
  if (code == "shdt"_code) return shortDateString(moment);
  if (code == "tstr"_code) return timeString(moment);
  return std::nullopt;
}

bool setPropertyOfDate(Date const& date, Code code, Datum const& value, RunState& state) {
  DateParts parts = partsOf(*date.seconds);
  if (code == "mnth"_code) {
    parts.month = coerceToInteger(value, state);
  } else if (code == "year"_code) {
    parts.year = coerceToInteger(value, state);
  } else if (code == "day "_code) {
    parts.day = coerceToInteger(value, state);
  } else if (code == "hour"_code) {
    parts.hours = coerceToInteger(value, state);
  } else if (code == "min "_code) {
    parts.minutes = coerceToInteger(value, state);
  } else if (code == "seco"_code) {
    parts.seconds = coerceToInteger(value, state);
  } else if (code == "time"_code) {
    parts.hours = 0;
    parts.minutes = 0;
    parts.seconds = coerceToInteger(value, state);
  } else {
    return false;
  }
  std::optional<std::int64_t> const moment = secondsOf(parts);
  if (!moment) raise(errors::kGeneral, "The date is out of range.");
  *date.seconds = *moment;
  return true;
}

}  // namespace morla::applescript
