#include "captureone/control/ControlClient.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "captureone/control/ControlProtocol.h"

namespace morla::captureone {

using scriptingbus::BusError;
using scriptingbus::BusPointer;
using scriptingbus::MessagePointer;
using Clock = std::chrono::steady_clock;

namespace {

constexpr char kDaemon[] = "org.freedesktop.DBus";
constexpr char kDaemonPath[] = "/org/freedesktop/DBus";

std::optional<std::string> readBytes(sd_bus_message* message) {
  void const* bytes = nullptr;
  std::size_t size = 0;
  if (sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size) < 0) return {};
  return size == 0 ? std::string() : std::string(static_cast<char const*>(bytes), size);
}

ControlClient::Outcome notRunning() {
  return {ControlClient::Result::notRunning, "the simulator is not running"};
}

}  // namespace

/// What has come by signal since it was made.
struct ControlClient::Watch {
  std::string key;
  std::string value;
  bool hasMatched = false;
  enum class Owner { unchanged, arrived, left } owner = Owner::unchanged;

  static int onChanged(sd_bus_message* signal, void* self, sd_bus_error*) {
    auto& watch = *static_cast<Watch*>(self);
    char const* name = nullptr;
    if (sd_bus_message_read_basic(signal, SD_BUS_TYPE_STRING, &name) < 0 || watch.key != name) return 0;
    if (readBytes(signal) == watch.value) watch.hasMatched = true;
    return 0;
  }

  static int onOwner(sd_bus_message* signal, void* self, sd_bus_error*) {
    char const* name = nullptr;
    char const* before = nullptr;
    char const* after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) < 0 || std::strcmp(name, kBusName) != 0) return 0;
    static_cast<Watch*>(self)->owner = *after == '\0' ? Owner::left : Owner::arrived;
    return 0;
  }

  /// Before anything is asked, so that nothing falls between the question and the first signal.
  int start(sd_bus* bus) {
    int const result =
        sd_bus_match_signal(bus, nullptr, kBusName, kControlPath, kControlInterface, "Changed", onChanged, this);
    if (result < 0) return result;
    return sd_bus_match_signal(bus, nullptr, kDaemon, kDaemonPath, kDaemon, "NameOwnerChanged", onOwner, this);
  }
};

std::optional<ControlClient> ControlClient::open() {
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) return {};
  return ControlClient(BusPointer(raw));
}

MessagePointer ControlClient::newCall(char const* method) {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_method_call(bus_.get(), &raw, kBusName, kControlPath, kControlInterface, method) < 0)
    return {};
  sd_bus_message_set_auto_start(raw, 0);
  return MessagePointer(raw);
}

bool ControlClient::isRunning() {
  BusError error;
  sd_bus_message* raw = nullptr;
  if (sd_bus_call_method(bus_.get(), kDaemon, kDaemonPath, kDaemon, "NameHasOwner", error.out(), &raw, "s", kBusName) <
      0) {
    return false;
  }
  MessagePointer const reply(raw);
  int hasOwner = 0;
  return sd_bus_message_read_basic(raw, SD_BUS_TYPE_BOOLEAN, &hasOwner) > 0 && hasOwner != 0;
}

ControlClient::Reply ControlClient::call(MessagePointer message) {
  if (message == nullptr) return {{Result::refused, "the message could not be made"}, nullptr};
  BusError error;
  sd_bus_message* raw = nullptr;
  int const result = sd_bus_call(bus_.get(), message.get(), 0, error.out(), &raw);
  if (result >= 0) return {{}, MessagePointer(raw)};
  // Nobody was there when the bus looked; who has come since has refused nothing.
  if (error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER))
    return {notRunning(), nullptr};
  // Whatever else went wrong, the first thing to know is whether anybody is there.
  if (error.is(kRefused) || isRunning()) return {{Result::refused, error.message()}, nullptr};
  return {notRunning(), nullptr};
}

ControlClient::Outcome ControlClient::get(std::string const& key) {
  auto message = newCall("Get");
  if (message != nullptr && sd_bus_message_append_basic(message.get(), SD_BUS_TYPE_STRING, key.c_str()) < 0) {
    return {Result::refused, "a key must be UTF-8"};
  }
  auto reply = call(std::move(message));
  if (reply.message == nullptr) return std::move(reply.outcome);
  auto value = readBytes(reply.message.get());
  if (!value) return {Result::refused, "the reply could not be understood"};
  return {Result::done, *std::move(value)};
}

ControlClient::Outcome ControlClient::set(std::string const& key, std::string const& value) {
  auto message = newCall("Set");
  if (message != nullptr) {
    if (sd_bus_message_append_basic(message.get(), SD_BUS_TYPE_STRING, key.c_str()) < 0) {
      return {Result::refused, "a key must be UTF-8"};
    }
    if (sd_bus_message_append_array(message.get(), SD_BUS_TYPE_BYTE, value.data(), value.size()) < 0) {
      return {Result::refused, "the value could not be sent"};
    }
  }
  return call(std::move(message)).outcome;
}

ControlClient::Outcome ControlClient::dump() {
  auto reply = call(newCall("Dump"));
  if (reply.message == nullptr) return std::move(reply.outcome);
  char const* text = nullptr;
  if (sd_bus_message_read_basic(reply.message.get(), SD_BUS_TYPE_STRING, &text) < 0) {
    return {Result::refused, "the reply could not be understood"};
  }
  return {Result::done, text};
}

ControlClient::Outcome ControlClient::reset() {
  return call(newCall("Reset")).outcome;
}

ControlClient::Outcome ControlClient::quit() {
  Watch watch;
  if (watch.start(bus_.get()) < 0) return {Result::refused, "the session bus cannot be listened to"};
  auto reply = call(newCall("Quit"));
  if (reply.outcome.result != Result::done) return std::move(reply.outcome);
  while (watch.owner != Watch::Owner::left) {
    int const result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) return {};  // the bus itself has gone, and everything on it
    if (result == 0 && sd_bus_wait(bus_.get(), UINT64_MAX) < 0) return {};
  }
  return {};
}

ControlClient::Outcome ControlClient::wait(std::string const& key, std::string const& value,
                                           std::chrono::duration<double> time) {
  auto const deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
  Watch watch{key, value};
  if (watch.start(bus_.get()) < 0) return {Result::refused, "the session bus cannot be listened to"};

  Outcome present = get(key);
  while (true) {
    if (present.result == Result::refused) return present;
    if (watch.hasMatched || (present.result == Result::done && present.text == value)) return {};
    int const result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) return notRunning();
    if (std::exchange(watch.owner, Watch::Owner::unchanged) != Watch::Owner::unchanged) present = get(key);
    if (result > 0) continue;
    auto const left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now()).count();
    if (left <= 0) break;
    if (sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(left)) < 0) return notRunning();
  }
  if (!isRunning()) return notRunning();
  return {Result::timedOut, "time over; " + key + " is not \"" + value + "\""};
}

}  // namespace morla::captureone
