#pragma once

#include <optional>
#include <variant>

#include "applescript/AppleEvent.h"

struct sd_bus_message;

/// Events and their replies as the bodies of messages. What cannot be written or read comes back as an event error
/// (-1700), ready to be given to the script.
namespace morla::scriptingbus {

/// Appends the arguments of `Send`: nothing when all went well.
[[nodiscard]] std::optional<applescript::EventError> writeEvent(sd_bus_message* call,
                                                                applescript::AppleEvent const& event);
[[nodiscard]] std::variant<applescript::AppleEvent, applescript::EventError> readEvent(sd_bus_message* call);

/// Appends the result of `Send`.
[[nodiscard]] std::optional<applescript::EventError> writeReply(sd_bus_message* message,
                                                                applescript::EventReply const& reply);
/// Never fails: what cannot be read *is* an error of the event.
[[nodiscard]] applescript::EventReply readReply(sd_bus_message* message);

}  // namespace morla::scriptingbus
