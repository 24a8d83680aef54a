#include "scriptingbus/EventCodec.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <utility>

#include "scriptingbus/Protocol.h"
#include "scriptingbus/ValueCodec.h"

namespace morla::scriptingbus {

using applescript::AppleEvent;
using applescript::Code;
using applescript::EventError;
using applescript::EventReply;
using applescript::Value;
namespace errors = applescript::errors;

static EventError codecError(std::string problem) {
  return {errors::kCannotCoerce, std::move(problem), {}};
}

static bool writeParameters(ValueWriter& writer, AppleEvent const& event) {
  if (!writer.open(SD_BUS_TYPE_ARRAY, "{sv}")) return false;
  for (auto const& [code, value] : event.parameters) {
    if (!writer.open(SD_BUS_TYPE_DICT_ENTRY, "sv") || !writer.writeCode(code) || !writer.write(value) ||
        !writer.close()) {
      return false;
    }
  }
  return writer.close();
}

std::optional<EventError> writeEvent(sd_bus_message* call, AppleEvent const& event) {
  ValueWriter writer(call);
  if (!writer.writeCode(event.eventClass) || !writer.writeCode(event.eventId) || !writer.write(event.directObject) ||
      !writeParameters(writer, event)) {
    return codecError(writer.problem());
  }
  using Count = std::chrono::milliseconds::rep;
  auto const timeout = static_cast<std::uint32_t>(
      std::clamp<Count>(event.timeout.count(), 0, std::numeric_limits<std::uint32_t>::max()));
  if (sd_bus_message_append(call, "uu", timeout, event.considerations.bits) < 0) {
    return codecError("The event cannot be sent.");
  }
  return std::nullopt;
}

static bool readParameters(ValueReader& reader, AppleEvent& event) {
  if (!reader.enter(SD_BUS_TYPE_ARRAY, "{sv}")) return false;
  while (!reader.isAtEnd()) {
    if (!reader.enter(SD_BUS_TYPE_DICT_ENTRY, "sv")) return false;
    auto const code = reader.readCode();
    if (!code) return false;
    auto value = reader.read();
    if (!value || !reader.leave()) return false;
    event.parameters.emplace_back(*code, std::move(*value));
  }
  return reader.leave();
}

std::variant<AppleEvent, EventError> readEvent(sd_bus_message* call) {
  if (sd_bus_message_has_signature(call, kSendArguments) <= 0) {
    return codecError("The event does not have the form of one.");
  }
  ValueReader reader(call);
  AppleEvent event;
  auto const eventClass = reader.readCode();
  auto const eventId = reader.readCode();
  auto direct = reader.read();
  if (!direct || !readParameters(reader, event)) return codecError(reader.problem());
  event.eventClass = *eventClass;
  event.eventId = *eventId;
  event.directObject = std::move(*direct);
  std::uint32_t timeout = 0;
  std::uint32_t considerations = 0;
  if (sd_bus_message_read(call, "uu", &timeout, &considerations) < 0) return codecError("The event ends too early.");
  event.timeout = std::chrono::milliseconds(timeout);
  event.considerations.bits = considerations;
  return event;
}

std::optional<EventError> writeReply(sd_bus_message* message, EventReply const& reply) {
  static EventError const kNoError;
  static Value const kNoValue;
  auto const* const value = std::get_if<Value>(&reply);
  EventError const& error = value != nullptr ? kNoError : std::get<EventError>(reply);

  ValueWriter writer(message);
  bool isWritten = sd_bus_message_append(message, "b", value != nullptr ? 1 : 0) >= 0;
  isWritten = isWritten && writer.write(value != nullptr ? *value : kNoValue);
  auto const number = static_cast<std::int32_t>(std::clamp<std::int64_t>(
      error.number, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
  isWritten = isWritten && sd_bus_message_append(message, "i", number) >= 0;
  isWritten = isWritten && writer.writeBytes(error.message) && writer.write(error.offender);
  if (isWritten) return std::nullopt;
  return codecError(writer.problem().empty() ? "The reply cannot be sent." : writer.problem());
}

EventReply readReply(sd_bus_message* message) {
  if (sd_bus_message_has_signature(message, kSendResult) <= 0) {
    return codecError("The reply does not have the form of one.");
  }
  ValueReader reader(message);
  int isOk = 0;
  if (sd_bus_message_read(message, "b", &isOk) <= 0) return codecError("The reply ends too early.");
  auto value = reader.read();
  if (!value) return codecError(reader.problem());
  if (isOk != 0) return std::move(*value);

  std::int32_t number = 0;
  if (sd_bus_message_read(message, "i", &number) <= 0) return codecError("The reply ends too early.");
  auto text = reader.readBytes();
  auto offender = reader.read();
  if (!text || !offender) return codecError(reader.problem());
  return EventError{number, std::move(*text), std::move(*offender)};
}

}  // namespace morla::scriptingbus
