#pragma once

#include <string>

#include "applescript/RunState.h"

namespace morla::applescript {

/// A value as the source of a script would write it, for messages and the `log` command: `{1, "a"}`.
[[nodiscard]] std::string sourceText(Datum const& datum, RunState const& state);

/// A real number as the language prints it: twelve digits, and an exponent from 1.0E+4 on and from 1.0E-4 down.
[[nodiscard]] std::string textOfReal(double number);

/// The name of a class for "Can’t make … into type …".
[[nodiscard]] std::string typeName(Code type, RunState const& state);

}  // namespace morla::applescript
