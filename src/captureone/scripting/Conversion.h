#pragma once

#include <optional>
#include <string_view>

#include "applescript/Value.h"
#include "captureone/scripting/Terms.h"

namespace morla::captureone {

/// `value` as a property of the dictionary type `type` takes it, when it is not an object: text takes numbers and
/// booleans, a number takes text that is one, an enumeration only its own enumerators. Nothing when it cannot be.
[[nodiscard]] std::optional<applescript::Value> convertTo(std::string_view type, applescript::Value const& value,
                                                          Terms const& terms);

}  // namespace morla::captureone
