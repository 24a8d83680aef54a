#include "scriptingbus/BusCalls.h"

#include <algorithm>

#include "scriptingbus/Protocol.h"

namespace morla::scriptingbus {

MessagePointer newDaemonCall(sd_bus* bus, char const* member) {
  sd_bus_message* raw = nullptr;
  int const result = sd_bus_message_new_method_call(bus, &raw, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                    "org.freedesktop.DBus", member);
  return result < 0 ? nullptr : MessagePointer(raw);
}

MessagePointer newDaemonCall(sd_bus* bus, char const* member, std::string const& argument) {
  auto call = newDaemonCall(bus, member);
  if (call == nullptr || sd_bus_message_append_basic(call.get(), SD_BUS_TYPE_STRING, argument.c_str()) < 0) return {};
  return call;
}

MessagePointer newApplicationCall(sd_bus* bus, std::string const& destination, char const* interface,
                                  char const* member) {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_method_call(bus, &raw, destination.c_str(), kScriptingPath, interface, member) < 0) return {};
  MessagePointer call(raw);
  sd_bus_message_set_auto_start(call.get(), 0);
  return call;
}

static MessagePointer callDaemon(sd_bus* bus, char const* member, std::string const& argument) {
  auto const call = newDaemonCall(bus, member, argument);
  sd_bus_message* reply = nullptr;
  if (call == nullptr || sd_bus_call(bus, call.get(), 0, nullptr, &reply) < 0) return nullptr;
  return MessagePointer(reply);
}

std::optional<std::string> ownerOf(sd_bus* bus, std::string const& busName) {
  auto const reply = callDaemon(bus, "GetNameOwner", busName);
  char const* owner = nullptr;
  if (reply == nullptr || sd_bus_message_read_basic(reply.get(), SD_BUS_TYPE_STRING, &owner) <= 0) return std::nullopt;
  return owner;
}

bool hasOwner(sd_bus* bus, std::string const& busName) {
  auto const reply = callDaemon(bus, "NameHasOwner", busName);
  int isOwned = 0;
  return reply != nullptr && sd_bus_message_read_basic(reply.get(), SD_BUS_TYPE_BOOLEAN, &isOwned) > 0 && isOwned != 0;
}

std::uint64_t microseconds(std::chrono::milliseconds timeout) {
  using std::chrono::milliseconds;
  // A script may ask for any number of seconds; what sd-bus adds to the present must not overflow.
  auto const bounded = std::clamp(timeout, milliseconds(1), milliseconds(std::chrono::hours(24 * 365)));
  return static_cast<std::uint64_t>(std::chrono::microseconds(bounded).count());
}

}  // namespace morla::scriptingbus
