#include "scriptingbus/AppleEventClient.h"

#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

#include "scriptingbus/BusCalls.h"
#include "scriptingbus/EventCodec.h"
#include "scriptingbus/Protocol.h"

namespace morla::scriptingbus {

using applescript::AppleEvent;
using applescript::EventError;
using applescript::EventReply;
namespace errors = applescript::errors;

using Lease = ConnectionPool::Lease;

/// A dictionary is a text in memory; who cannot say it in this time will not run the script's events either.
static constexpr std::chrono::milliseconds kDictionaryTimeout{10'000};

static EventError notRunning() {
  return {errors::kApplicationNotRunning, "Application isn’t running.", {}};
}

static EventError connectionInvalid() {
  return {errors::kConnectionInvalid, "Connection is invalid.", {}};
}

static EventError timedOut() {
  return {errors::kTimedOut, "AppleEvent timed out.", {}};
}

/// Has the bus start the application that is installed for `busName`.
static std::optional<EventError> start(Lease& lease, std::string const& busName, std::chrono::milliseconds timeout) {
  auto const call = newDaemonCall(lease.bus(), "StartServiceByName", busName);
  if (call == nullptr || sd_bus_message_append(call.get(), "u", 0U) < 0) return notRunning();
  int const result = sd_bus_call(lease.bus(), call.get(), microseconds(timeout), nullptr, nullptr);
  if (result >= 0) return std::nullopt;
  if (result != -ETIMEDOUT) return notRunning();
  lease.discard();
  return timedOut();
}

/// Why no reply to an event came from `owner`.
static EventError failureOf(Lease& lease, std::string const& owner, int result, BusError const& error) {
  if (error.is(SD_BUS_ERROR_UNKNOWN_METHOD) || error.is(SD_BUS_ERROR_UNKNOWN_OBJECT) ||
      error.is(SD_BUS_ERROR_UNKNOWN_INTERFACE)) {
    return {errors::kEventNotHandled, "The application is not scriptable.", {}};
  }
  bool const isSilent = result == -ETIMEDOUT || error.is(SD_BUS_ERROR_NO_REPLY) || error.is(SD_BUS_ERROR_TIMEOUT);
  // The bus gives the same answer for an owner that said nothing in time and for one that went away meanwhile.
  bool const isTimeOut = isSilent && hasOwner(lease.bus(), owner);
  if (isSilent) lease.discard();
  return isTimeOut ? timedOut() : connectionInvalid();
}

/// Nothing was delivered, for there is nobody of that unique name any more.
static bool hasNotArrived(BusError const& error) {
  return error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER) || error.is(SD_BUS_ERROR_SERVICE_UNKNOWN);
}

EventReply AppleEventClient::send(std::string const& busName, AppleEvent const& event, Launching launching,
                                  KnownOwners& owners) {
  auto lease = pool_.acquire();
  if (!lease) return notRunning();
  bool const wasKnown = owners.contains(busName);
  auto owner = wasKnown ? std::optional(owners[busName]) : ownerOf(lease->bus(), busName);
  if (!owner) {
    if (launching == Launching::never) return notRunning();
    if (auto const problem = start(*lease, busName, event.timeout)) return *problem;
    owner = ownerOf(lease->bus(), busName);
    if (!owner) return notRunning();
  }
  owners[busName] = *owner;
  // To the unique name: an application that ends and is started again meanwhile is another one, which knows nothing of
  // this event.
  auto const call = newApplicationCall(lease->bus(), *owner, kScriptingInterface, "Send");
  if (call == nullptr) return connectionInvalid();
  if (auto const problem = writeEvent(call.get(), event)) return *problem;
  if (!event.wantsReply) {
    bool const isSent = sd_bus_message_set_expect_reply(call.get(), 0) >= 0 &&
                        sd_bus_send(lease->bus(), call.get(), nullptr) >= 0 && sd_bus_flush(lease->bus()) >= 0;
    if (!isSent) return connectionInvalid();
    return applescript::Value();
  }
  BusError error;
  sd_bus_message* reply = nullptr;
  int const result = sd_bus_call(lease->bus(), call.get(), microseconds(event.timeout), error.out(), &reply);
  if (result >= 0) return readReply(MessagePointer(reply).get());
  if (!hasNotArrived(error)) return failureOf(*lease, *owner, result, error);
  owners.erase(busName);
  // It ended since it was asked for: no reply was due. Just now, and there is nobody; earlier, and somebody else may
  // own the name.
  if (!wasKnown) return notRunning();
  lease.reset();
  return send(busName, event, launching, owners);
}

AppleEventClient::DictionaryAnswer AppleEventClient::dictionary(std::string const& busName, KnownOwners& owners) {
  auto lease = pool_.acquire();
  if (!lease) return {nullptr, "There is no session bus."};
  auto const owner = owners.contains(busName) ? std::optional(owners[busName]) : ownerOf(lease->bus(), busName);
  if (!owner) return {nullptr, "Nobody owns " + busName + "."};
  owners[busName] = *owner;
  {
    std::lock_guard const lock(mutex_);
    auto const found = dictionaries_.find(busName);
    if (found != dictionaries_.end() && found->second.uniqueName == *owner) return {found->second.dictionary, {}};
  }
  auto const call = newApplicationCall(lease->bus(), *owner, kScriptingInterface, "Dictionary");
  if (call == nullptr) return {nullptr, "The dictionary of " + busName + " cannot be asked for."};
  BusError error;
  sd_bus_message* raw = nullptr;
  int const result = sd_bus_call(lease->bus(), call.get(), microseconds(kDictionaryTimeout), error.out(), &raw);
  if (result < 0) {
    if (result == -ETIMEDOUT) lease->discard();
    return {nullptr, error.message()};
  }
  MessagePointer const reply(raw);
  char const* table = nullptr;
  if (sd_bus_message_read(raw, "s", &table) <= 0) return {nullptr, "The dictionary of " + busName + " is no text."};
  auto parsed = applescript::parseDictionary(table);
  if (!parsed.dictionary) return {nullptr, "The dictionary of " + busName + ": " + parsed.problem};
  auto shared = std::make_shared<applescript::Dictionary const>(std::move(*parsed.dictionary));
  std::lock_guard const lock(mutex_);
  dictionaries_[busName] = {*owner, shared};
  return {shared, {}};
}

}  // namespace morla::scriptingbus
