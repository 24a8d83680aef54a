#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/Host.h"
#include "applescript/Value.h"

namespace morla::applescript {

/// Bounds that no script can exceed; a test lowers them. Exceeding one is an error of the script, never a crash.
struct Limits {
  std::size_t sourceBytes = std::size_t{4} * 1024 * 1024;
  std::size_t depth = 200;  ///< nesting of statements and expressions in the source, and of values in each other
  std::size_t evaluationDepth = 10'000;  ///< nesting of what is being evaluated at one time, through all handler calls
  /// The stack that this may take of the thread; its size depends on the compiler, and threads have 8 MiB.
  std::size_t stackBytes = std::size_t{5} * 1024 * 1024;
  /// A loop without end runs on, as in the language; only a test bounds it.
  std::uint64_t steps = std::numeric_limits<std::uint64_t>::max();
  std::size_t memoryBytes = std::size_t{1024} * 1024 * 1024;  ///< all values of a script together
  std::size_t listItems = 10'000'000;
  std::size_t textBytes = std::size_t{64} * 1024 * 1024;
};

/// Where in the source something is, in bytes.
struct SourceRange {
  std::size_t start = 0;
  std::size_t length = 0;
};

/// Why a script did not compile or ended in an error.
struct ScriptFailure {
  std::int64_t number = 0;
  std::string message;       ///< "Capture One got an error: …" when the application said so
  std::string briefMessage;  ///< the same without that prefix
  std::optional<std::string> applicationName;
  SourceRange range;
};

struct ScriptOutcome {
  std::optional<Value> result;  ///< none when the script has no value, or failed
  std::optional<ScriptFailure> failure;
  std::optional<std::string> source = {};  ///< the value as a script would write it, with the applications' own words
};

/// The text item delimiters, which outlive a script within one process: a run starts with a copy and hands its own
/// back.
using TextItemDelimiters = std::vector<std::string>;

/// How a script is started.
struct Invocation {
  std::vector<std::string> arguments = {};  ///< what `on run argv` gets
  bool wantsSource = false;                 ///< ScriptOutcome::source is wanted
  std::string path = {};                    ///< the script's own file, for `path to me`; "" when there is none
};

/// Compiles and runs `source`. Any thread; runs do not share anything but what `host` shares.
[[nodiscard]] ScriptOutcome run(std::string_view source, Host& host, TextItemDelimiters& delimiters,
                                Limits const& limits = {}, Invocation const& invocation = {});

/// Compiles only: the failure, or nothing.
[[nodiscard]] std::optional<ScriptFailure> check(std::string_view source, Host& host, Limits const& limits = {});

/// The result as plain text, as a descriptor's string value gives it: text, numbers, booleans, codes of constants,
/// paths; nothing for lists, records and specifiers.
[[nodiscard]] std::optional<std::string> stringValue(Value const& value);

}  // namespace morla::applescript
