#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "applescript/Value.h"

namespace morla::applescript {

/// What a comparison made by the application shall ignore; the bits are this project's own.
struct Considerations {
  std::uint32_t bits = kIgnoreCase;
  static constexpr std::uint32_t kIgnoreCase = 1;
  static constexpr std::uint32_t kIgnoreDiacriticals = 2;
  static constexpr std::uint32_t kIgnoreHyphens = 4;
  static constexpr std::uint32_t kIgnorePunctuation = 8;
  static constexpr std::uint32_t kIgnoreWhiteSpace = 16;
  static constexpr std::uint32_t kConsiderNumericStrings = 32;  ///< "2" comes before "10"; the others are ignored bits
  friend bool operator==(Considerations, Considerations) = default;
};

/// AppleScript's default, unless the script says otherwise.
inline constexpr std::chrono::milliseconds kDefaultReplyTimeout{120'000};

/// One request to an application. Only codes cross: the application never sees a word of the script.
///
/// Where an object is meant, null is the application itself. The parameter 'subj' is the object of the innermost
/// `tell`, when that is not the application and the event has no direct object. An insertion place ("end of recipes")
/// is the record {'kobj': object, 'kpos': enumerator 'bgng', 'end ', 'befo' or 'afte'}; "at X" alone is X's specifier.
struct AppleEvent {
  Code eventClass;
  Code eventId;
  Value directObject;  ///< null when the command has none
  std::vector<std::pair<Code, Value>> parameters = {};
  std::chrono::milliseconds timeout = kDefaultReplyTimeout;
  Considerations considerations = {};
  bool wantsReply = true;  ///< else nobody waits for the application, and what it answers is lost
};

struct EventError {
  std::int64_t number = 0;
  std::string message;
  Value offender;  ///< the object that the error is about; null when unknown
};

/// A null value means that the command has no result.
using EventReply = std::variant<Value, EventError>;

/// Error numbers of Apple events that both sides of the bus use.
namespace errors {
inline constexpr std::int64_t kFileNotFound = -43;
inline constexpr std::int64_t kApplicationNotRunning = -600;
inline constexpr std::int64_t kConnectionInvalid = -609;
inline constexpr std::int64_t kCannotCoerce = -1700;
inline constexpr std::int64_t kParameterMissing = -1701;
inline constexpr std::int64_t kEventNotHandled = -1708;
inline constexpr std::int64_t kTimedOut = -1712;
inline constexpr std::int64_t kInvalidIndex = -1719;
inline constexpr std::int64_t kNoSuchObject = -1728;
inline constexpr std::int64_t kNotPermitted = -1743;
inline constexpr std::int64_t kConsentPending = -1744;
inline constexpr std::int64_t kHandlerFailed = -10000;
inline constexpr std::int64_t kNotModifiable = -10003;
inline constexpr std::int64_t kCannotSet = -10006;
inline constexpr std::int64_t kCannotPutThere = -10024;
}  // namespace errors

}  // namespace morla::applescript
