#include "captureone/permissions/SettingsInstance.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace morla::captureone {
namespace {

using scriptingbus::BusError;
using scriptingbus::BusPointer;
using scriptingbus::MessagePointer;

constexpr char kPath[] = "/com/apple/systempreferences";
constexpr char kInterface[] = "org.freedesktop.Application";
/// The other process answers within a turn of its loop.
constexpr std::uint64_t kPatienceMicroseconds = 5'000'000;

/// 0, or a negative errno.
int handOver(sd_bus* bus, std::string const& address) {
  sd_bus_message* made = nullptr;
  int result = sd_bus_message_new_method_call(bus, &made, kSettingsIdentifier, kPath, kInterface, "Open");
  MessagePointer const call(result >= 0 ? made : nullptr);
  if (result >= 0) result = sd_bus_message_append(made, "as", address.empty() ? 0 : 1, address.c_str());
  if (result >= 0) result = sd_bus_message_append(made, "a{sv}", 0);
  if (result >= 0) result = sd_bus_message_set_auto_start(made, 0);
  BusError error;
  sd_bus_message* reply = nullptr;
  if (result >= 0) result = sd_bus_call(bus, made, kPatienceMicroseconds, error.out(), &reply);
  MessagePointer const received(result >= 0 ? reply : nullptr);
  return result < 0 ? result : 0;
}

}  // namespace

SettingsInstance::~SettingsInstance() = default;

SettingsInstance::Claimed SettingsInstance::claim(std::string const& address) {
  sd_bus* raw = nullptr;
  if (int const result = sd_bus_open_user(&raw); result < 0) {
    return {Claim::failed, nullptr, std::string("no session bus: ") + std::strerror(-result)};
  }
  std::unique_ptr<SettingsInstance> instance(new SettingsInstance(BusPointer(raw)));
  // The object is there before the name is: who sees the name can call it.
  int result = instance->serve();
  if (result >= 0) result = sd_bus_request_name(raw, kSettingsIdentifier, 0);
  if (result >= 0) return {Claim::first, std::move(instance), {}};
  if (result != -EEXIST) return {Claim::failed, nullptr, std::string("the session bus: ") + std::strerror(-result)};
  result = handOver(raw, address);
  if (result < 0) {
    return {Claim::failed, nullptr, std::string("the window that is open does not answer: ") + std::strerror(-result)};
  }
  return {Claim::handedOver, nullptr, {}};
}

// The macros of sd-bus are C: they cast and initialise as C does.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wpedantic"
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wc99-designator"
#endif
int SettingsInstance::serve() {
  static constexpr auto called = [](sd_bus_message* call, void* self, sd_bus_error*) {
    return static_cast<SettingsInstance*>(self)->take(call);
  };
  static sd_bus_vtable const kTable[] = {
      SD_BUS_VTABLE_START(0), SD_BUS_METHOD("Activate", "a{sv}", "", called, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_METHOD("Open", "asa{sv}", "", called, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};
  return sd_bus_add_object_vtable(bus_.get(), nullptr, kPath, kInterface, kTable, this);
}
#pragma GCC diagnostic pop

int SettingsInstance::take(sd_bus_message* call) {
  std::string address;
  if (sd_bus_message_is_method_call(call, kInterface, "Open") > 0) {
    if (int const result = sd_bus_message_enter_container(call, 'a', "s"); result < 0) return result;
    char const* first = nullptr;
    if (sd_bus_message_read_basic(call, 's', &first) > 0) address = first;
  }
  if (open_) open_(address);
  int const result = sd_bus_reply_method_return(call, "");
  sd_bus_flush(bus_.get());  // whoever waits for the connection waits for reading only
  return result < 0 ? result : 1;
}

int SettingsInstance::fileDescriptor() const {
  return sd_bus_get_fd(bus_.get());
}

bool SettingsInstance::process() {
  for (;;) {
    int const result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) return false;
    if (result == 0) return true;
  }
}

}  // namespace morla::captureone
