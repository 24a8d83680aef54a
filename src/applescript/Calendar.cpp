#include "applescript/Calendar.h"

#include <array>
#include <charconv>
#include <chrono>
#include <vector>

#include "applescript/Terminology.h"

namespace morla::applescript {
namespace {

constexpr std::int64_t kSecondsOfADay = 86400;
constexpr std::int64_t kFirstYear = 1;
constexpr std::int64_t kLastYear = 9999;

constexpr auto kMonths =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July", "August",
                                     "September", "October", "November", "December"});
constexpr auto kWeekdays =
    std::to_array<std::string_view>({"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});

[[nodiscard]] std::int64_t floorDivided(std::int64_t a, std::int64_t b) {
  return a / b - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0);
}

[[nodiscard]] std::int64_t daysOf(std::int64_t year, std::int64_t month, std::int64_t day) {
  namespace calendar = std::chrono;
  calendar::sys_days const first{calendar::year(static_cast<int>(year)) /
                                 calendar::month(static_cast<unsigned>(month)) / calendar::day(1)};
  return first.time_since_epoch().count() + day - 1;
}

[[nodiscard]] std::string twoDigits(std::int64_t number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

/// 1 for the first name that `word` is the beginning of, with three letters at least; 0 when there is none.
template <std::size_t N>
[[nodiscard]] std::int64_t indexOf(std::array<std::string_view, N> const& names, std::string_view word) {
  if (word.size() < 3) return 0;
  for (std::size_t i = 0; i < N; ++i) {
    if (lowercaseKey(names[i]).starts_with(word)) return static_cast<std::int64_t>(i) + 1;
  }
  return 0;
}

/// Reads a date word by word; what comes first decides what a number is.
class DateReader {
 public:
  /// `standard`: what is taken where the text says nothing.
  explicit DateReader(DateParts const& standard) : parts_(standard) {}

  [[nodiscard]] std::optional<std::int64_t> read(std::string_view text) {
    while (!text.empty()) {
      if (!take(text)) return std::nullopt;
    }
    if (!hasTime_ && numbers_.empty() && !hasMonth_) return std::nullopt;
    if (!assignNumbers() || !assignHalf()) return std::nullopt;
    bool const isRight = parts_.month >= 1 && parts_.month <= 12 && parts_.day >= 1 && parts_.day <= 31 &&
                         parts_.hours <= 23 && parts_.minutes <= 59 && parts_.seconds <= 59;
    return isRight ? secondsOf(parts_) : std::nullopt;
  }

 private:
  [[nodiscard]] static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  [[nodiscard]] static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

  [[nodiscard]] bool take(std::string_view& text) {
    if (isDigit(text.front())) return takeNumber(text);
    if (isLetter(text.front())) return takeWord(text);
    static constexpr std::string_view kSeparators = " ,/-.\t";
    if (kSeparators.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
  }

  [[nodiscard]] bool takeNumber(std::string_view& text) {
    std::int64_t number = 0;
    auto const [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    auto const length = static_cast<std::size_t>(end - text.data());
    if (problem != std::errc() || length > 4) return false;
    text.remove_prefix(length);
    if (length == 4 && numbers_.empty()) startsWithYear_ = true;
    if (text.starts_with(':')) return takeTime(number, text);
    numbers_.push_back(number);
    return numbers_.size() <= 3;
  }

  [[nodiscard]] bool takeTime(std::int64_t hours, std::string_view& text) {
    if (hasTime_) return false;
    hasTime_ = true;
    parts_.hours = hours;
    parts_.minutes = parts_.seconds = 0;
    for (std::int64_t* part : {&parts_.minutes, &parts_.seconds}) {
      if (!text.starts_with(':')) break;
      text.remove_prefix(1);
      auto const [end, problem] = std::from_chars(text.data(), text.data() + text.size(), *part);
      if (problem != std::errc()) return false;
      text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    return true;
  }

  [[nodiscard]] bool takeWord(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() && isLetter(text[length])) ++length;
    std::string const word = lowercaseKey(text.substr(0, length));
    text.remove_prefix(length);
    if (word == "at" || word == "t" || indexOf(kWeekdays, word) != 0) return true;
    if (word == "am" || word == "pm") {
      half_ = word;
      if (hasTime_ || numbers_.empty()) return hasTime_;
      // "3 PM"
      std::int64_t const hours = numbers_.back();
      numbers_.pop_back();
      std::string_view none;
      return takeTime(hours, none);
    }
    std::int64_t const month = indexOf(kMonths, word);
    if (month == 0 || hasMonth_) return false;
    parts_.month = month;
    hasMonth_ = true;
    return true;
  }

  [[nodiscard]] bool assignNumbers() {
    std::vector<std::int64_t*> places;
    if (hasMonth_) {
      places = startsWithYear_ ? std::vector{&parts_.year, &parts_.day} : std::vector{&parts_.day, &parts_.year};
    } else {
      places = startsWithYear_ ? std::vector{&parts_.year, &parts_.month, &parts_.day}
                               : std::vector{&parts_.month, &parts_.day, &parts_.year};
    }
    if (numbers_.size() > places.size() || numbers_.size() == 1) return false;
    for (std::size_t i = 0; i < numbers_.size(); ++i) *places[i] = numbers_[i];
    if (numbers_.size() == places.size() && parts_.year < 100) parts_.year += parts_.year < 30 ? 2000 : 1900;
    return true;
  }

  [[nodiscard]] bool assignHalf() {
    if (half_.empty()) return true;
    if (!hasTime_ || parts_.hours < 1 || parts_.hours > 12) return false;
    parts_.hours = parts_.hours % 12 + (half_ == "pm" ? 12 : 0);
    return true;
  }

  DateParts parts_;
  std::vector<std::int64_t> numbers_;
  std::string half_;
  bool hasMonth_ = false;
  bool hasTime_ = false;
  bool startsWithYear_ = false;
};

}  // namespace

DateParts partsOf(std::int64_t seconds) {
  std::int64_t const days = floorDivided(seconds, kSecondsOfADay);
  std::int64_t const rest = seconds - days * kSecondsOfADay;
  std::chrono::sys_days const point{std::chrono::days(days)};
  std::chrono::year_month_day const date{point};
  DateParts parts;
  parts.year = static_cast<int>(date.year());
  parts.month = static_cast<unsigned>(date.month());
  parts.day = static_cast<unsigned>(date.day());
  parts.hours = rest / 3600;
  parts.minutes = rest / 60 % 60;
  parts.seconds = rest % 60;
  parts.weekday = std::chrono::weekday(point).c_encoding() + 1;
  return parts;
}

bool isDateInRange(double seconds) {
  static double const first = static_cast<double>(daysOf(kFirstYear, 1, 1) * kSecondsOfADay);
  static double const last = static_cast<double>(daysOf(kLastYear, 12, 31) * kSecondsOfADay);
  return seconds >= first && seconds <= last;
}

std::optional<std::int64_t> secondsOf(DateParts const& parts) {
  constexpr std::int64_t kMost = std::int64_t{1} << 40;
  for (std::int64_t const part : {parts.month, parts.day, parts.hours, parts.minutes, parts.seconds}) {
    if (part > kMost || part < -kMost) return std::nullopt;
  }
  std::int64_t const year = parts.year + floorDivided(parts.month - 1, 12);
  std::int64_t const month = parts.month - 1 - floorDivided(parts.month - 1, 12) * 12 + 1;
  if (year < kFirstYear || year > kLastYear) return std::nullopt;
  double const seconds = static_cast<double>(daysOf(year, month, 1) + parts.day - 1) * kSecondsOfADay +
                         static_cast<double>(parts.hours) * 3600 + static_cast<double>(parts.minutes) * 60 +
                         static_cast<double>(parts.seconds);
  if (!isDateInRange(seconds)) return std::nullopt;
  return static_cast<std::int64_t>(seconds);
}

std::string isoText(std::int64_t seconds) {
  DateParts const parts = partsOf(seconds);
  std::string const year = std::to_string(parts.year);
  return std::string(4 - std::min<std::size_t>(year.size(), 4), '0') + year + "-" + twoDigits(parts.month) + "-" +
         twoDigits(parts.day) + "T" + twoDigits(parts.hours) + ":" + twoDigits(parts.minutes) + ":" +
         twoDigits(parts.seconds);
}

std::string dateString(std::int64_t seconds) {
  DateParts const parts = partsOf(seconds);
  return std::string(weekdayName(parts.weekday)) + ", " + std::string(monthName(parts.month)) + " " +
         std::to_string(parts.day) + ", " + std::to_string(parts.year);
}

std::string shortDateString(std::int64_t seconds) {
  DateParts const parts = partsOf(seconds);
  return std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" + twoDigits(parts.year % 100);
}

std::string timeString(std::int64_t seconds) {
  DateParts const parts = partsOf(seconds);
  std::int64_t const hours = parts.hours % 12 == 0 ? 12 : parts.hours % 12;
  return std::to_string(hours) + ":" + twoDigits(parts.minutes) + ":" + twoDigits(parts.seconds) +
         (parts.hours < 12 ? " AM" : " PM");
}

std::string dateText(Date const& date) {
  return dateString(*date.seconds) + " at " + timeString(*date.seconds);
}

std::optional<std::int64_t> parseDate(std::string_view text, std::int64_t today) {
  DateParts midnight = partsOf(today);
  midnight.hours = midnight.minutes = midnight.seconds = 0;
  return DateReader(midnight).read(text);
}

std::optional<std::int64_t> parseRelativeDate(std::string_view text, std::int64_t base) {
  return DateReader(partsOf(base)).read(text);
}

std::string_view monthName(std::int64_t month) {
  return kMonths[static_cast<std::size_t>(month - 1)];
}

std::string_view weekdayName(std::int64_t weekday) {
  return kWeekdays[static_cast<std::size_t>(weekday - 1)];
}

}  // namespace morla::applescript
