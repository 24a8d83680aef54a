#pragma once

#include <optional>
#include <string>

#include "applescript/RunState.h"

namespace morla::applescript {

/// What a reference to a list's item, a variable or a property refers to at last; any other datum is itself.
[[nodiscard]] Datum dereferenced(Datum datum);
/// Null when the owner has no such property any more.
[[nodiscard]] Datum* storageAt(PropertyPlace const& place);

/// The language's coercions of values. They answer nothing where the value cannot become the class.
[[nodiscard]] std::optional<Datum> coerced(Datum const& datum, Code type, RunState& state);
[[nodiscard]] std::optional<std::string> coercedToText(Datum const& datum, RunState& state, std::size_t depth = 0);
[[nodiscard]] std::optional<Datum> coercedToNumber(Datum const& datum);

/// The same, but raise -1700.
[[nodiscard]] Datum coerce(Datum const& datum, Code type, RunState& state);
[[nodiscard]] double coerceToReal(Datum const& datum, RunState& state);
[[nodiscard]] bool coerceToBoolean(Datum const& datum, RunState& state);
[[nodiscard]] std::int64_t coerceToInteger(Datum const& datum, RunState& state);
[[noreturn]] void raiseCannotMake(Datum const& datum, Code type, RunState const& state);

/// The class that `class of` answers.
[[nodiscard]] Code classOf(Datum const& datum);

/// "/Users/me/a" <-> "Macintosh HD:Users:me:a". The first part of an HFS path names the volume: the start-up disk, or a
/// folder of /Volumes.
[[nodiscard]] std::string hfsPath(std::string const& posixPath);
[[nodiscard]] std::string posixPath(std::string const& hfsPath);

}  // namespace morla::applescript
