#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace morla::platform {

struct ScriptError {
  /// AppleScript's error number; absent when the system gave none.
  std::optional<std::int64_t> number;
  std::string message;
};

/// What a script run gave: text, an error, or neither (a result that has no text form).
struct ScriptReply {
  std::optional<std::string> text;
  std::optional<ScriptError> error;
};

/// The user has refused this program the right to send Apple events (errAEEventNotPermitted).
inline constexpr std::int64_t kErrorNotPermitted = -1743;

/// Compiles and runs AppleScript source.
class ScriptRunner {
 public:
  virtual ~ScriptRunner() = default;

  /// Any thread but the main one; blocks until the script has ended, for minutes if an application is silent. Calls
  /// overlap and are not serialised. `source` is UTF-8. Every failure, compilation included, is the error of the reply.
  [[nodiscard]] virtual ScriptReply execute(std::string const& source) = 0;
};

}  // namespace morla::platform
