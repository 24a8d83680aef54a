#pragma once

#include <functional>
#include <variant>

#include "captureone/scripting/ServedClass.h"

namespace morla::captureone {

/// What an operand of a test means for the object that is being tested.
using OperandReader = std::function<Reading(applescript::Value const& operand)>;

/// Whether a test of a specifier holds (its form is described at `applescript::KeyForm`). A comparison of things that
/// cannot be compared is an error, but for equality: they are different.
[[nodiscard]] std::variant<bool, applescript::EventError> holds(applescript::Value const& test,
                                                                OperandReader const& read,
                                                                applescript::Considerations considerations);

}  // namespace morla::captureone
