#pragma once

#include <cstdint>

/// AppleScript's own error numbers, beside those of Apple events.
namespace morla::applescript::errors {

inline constexpr std::int64_t kOutOfMemory = -108;
inline constexpr std::int64_t kUserCancelled = -128;
inline constexpr std::int64_t kPrivilege = -10004;
inline constexpr std::int64_t kWrongArguments = -1721;
inline constexpr std::int64_t kNoUserInteraction = -1713;
inline constexpr std::int64_t kGeneral = -2700;
inline constexpr std::int64_t kDivisionByZero = -2701;
inline constexpr std::int64_t kNumberTooLarge = -2702;
inline constexpr std::int64_t kNestedTooDeeply = -2706;
inline constexpr std::int64_t kTooManySteps = -2707;
inline constexpr std::int64_t kValueTooLarge = -2708;
inline constexpr std::int64_t kInvalidDate = -30720;
inline constexpr std::int64_t kCannotGoAfter = -2740;
inline constexpr std::int64_t kUnexpectedWord = -2741;
inline constexpr std::int64_t kParameterTwice = -2750;
inline constexpr std::int64_t kPropertyTwice = -2751;
inline constexpr std::int64_t kHandlerTwice = -2752;
inline constexpr std::int64_t kUndefinedVariable = -2753;
inline constexpr std::int64_t kExitOutsideRepeat = -2755;
inline constexpr std::int64_t kNoResult = -2763;

}  // namespace morla::applescript::errors
