#pragma once

#include <string>

#include "applescript/Value.h"

namespace morla::linux {

/// As a script would write it: quoted text, `{…}` for lists and records. What has a name only in an application's
/// dictionary is written with its code: «class docu», «property pnam», «constant ****Rjpg».
[[nodiscard]] std::string sourceForm(applescript::Value const& value);

/// As a person reads it: text without quotation marks, the items of lists and records without braces.
[[nodiscard]] std::string humanForm(applescript::Value const& value);

}  // namespace morla::linux
