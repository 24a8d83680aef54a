#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "scriptingbus/BusHandles.h"

/// Calls that more than one part of the client makes. None of them starts an application.
namespace morla::scriptingbus {

/// A call of the bus daemon itself.
[[nodiscard]] MessagePointer newDaemonCall(sd_bus* bus, char const* member);
/// The same with one text as its argument.
[[nodiscard]] MessagePointer newDaemonCall(sd_bus* bus, char const* member, std::string const& argument);
/// A call of the scriptable object of `destination`.
[[nodiscard]] MessagePointer newApplicationCall(sd_bus* bus, std::string const& destination, char const* interface,
                                                char const* member);

/// The unique name of whoever owns `busName`.
[[nodiscard]] std::optional<std::string> ownerOf(sd_bus* bus, std::string const& busName);
[[nodiscard]] bool hasOwner(sd_bus* bus, std::string const& busName);

/// As sd-bus wants it, which takes zero for its own default.
[[nodiscard]] std::uint64_t microseconds(std::chrono::milliseconds timeout);

}  // namespace morla::scriptingbus
