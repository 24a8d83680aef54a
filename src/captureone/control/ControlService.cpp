#include "captureone/control/ControlService.h"

#include <systemd/sd-bus.h>

#include <cstring>
#include <optional>
#include <utility>

#include "captureone/control/ControlProtocol.h"
#include "scriptingbus/BusHandles.h"

namespace morla::captureone {
namespace {

using scriptingbus::MessagePointer;

struct SlotReleaser {
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};

class BusControlService final : public ControlService {
 public:
  BusControlService(sd_bus* bus, Controls& controls, Hooks hooks)
      : bus_(bus), controls_(controls), hooks_(std::move(hooks)) {}

  /// 0, or a negative errno.
  int start() {
    sd_bus_slot* slot = nullptr;
    int const result = sd_bus_add_object_vtable(bus_, &slot, kControlPath, kControlInterface, kTable, this);
    if (result < 0) return result;
    slot_.reset(slot);
    changes_ = controls_.onChange([this](Controls::Snapshot const& changed) { announce(changed); });
    return 0;
  }

 private:
  static BusControlService& of(void* self) { return *static_cast<BusControlService*>(self); }
  static int onGet(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onSet(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onDump(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onReset(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onQuit(sd_bus_message* call, void* self, sd_bus_error* error);
  void announce(Controls::Snapshot const& changed);
  /// Whoever waits for the connection waits for reading only, so nothing may stay behind in its queue.
  int sent(int result) {
    sd_bus_flush(bus_);
    return result < 0 ? result : 1;
  }

  static sd_bus_vtable const kTable[];

  sd_bus* bus_;
  Controls& controls_;
  Hooks hooks_;
  std::unique_ptr<sd_bus_slot, SlotReleaser> slot_;
  Subscription changes_;
};

// The macros of sd-bus are C: they cast and initialise as C does.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wpedantic"
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wc99-designator"
#endif
sd_bus_vtable const BusControlService::kTable[] = {SD_BUS_VTABLE_START(0),
                                                   SD_BUS_METHOD("Get", "s", "ay", onGet, SD_BUS_VTABLE_UNPRIVILEGED),
                                                   SD_BUS_METHOD("Set", "say", "", onSet, SD_BUS_VTABLE_UNPRIVILEGED),
                                                   SD_BUS_METHOD("Dump", "", "s", onDump, SD_BUS_VTABLE_UNPRIVILEGED),
                                                   SD_BUS_METHOD("Reset", "", "", onReset, SD_BUS_VTABLE_UNPRIVILEGED),
                                                   SD_BUS_METHOD("Quit", "", "", onQuit, SD_BUS_VTABLE_UNPRIVILEGED),
                                                   SD_BUS_SIGNAL("Changed", "say", 0),
                                                   SD_BUS_VTABLE_END};
#pragma GCC diagnostic pop

int appendBytes(sd_bus_message* message, std::string const& bytes) {
  return sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, bytes.data(), bytes.size());
}

int BusControlService::onGet(sd_bus_message* call, void* self, sd_bus_error* error) {
  auto& service = of(self);
  char const* key = nullptr;
  int result = sd_bus_message_read_basic(call, SD_BUS_TYPE_STRING, &key);
  if (result < 0) return result;
  auto const value = service.controls_.get(key);
  if (!value) return sd_bus_error_set(error, kRefused, service.controls_.whyUnreadable(key).c_str());
  sd_bus_message* reply = nullptr;
  result = sd_bus_message_new_method_return(call, &reply);
  if (result < 0) return result;
  MessagePointer const message(reply);
  result = appendBytes(reply, *value);
  if (result < 0) return result;
  return service.sent(sd_bus_send(service.bus_, reply, nullptr));
}

int BusControlService::onSet(sd_bus_message* call, void* self, sd_bus_error* error) {
  auto& service = of(self);
  char const* key = nullptr;
  int result = sd_bus_message_read_basic(call, SD_BUS_TYPE_STRING, &key);
  if (result < 0) return result;
  void const* bytes = nullptr;
  std::size_t size = 0;
  result = sd_bus_message_read_array(call, SD_BUS_TYPE_BYTE, &bytes, &size);
  if (result < 0) return result;
  std::string value;
  if (size > 0) value.assign(static_cast<char const*>(bytes), size);
  if (auto const refusal = service.controls_.set(key, value)) {
    return sd_bus_error_set(error, kRefused, refusal->c_str());
  }
  service.hooks_.settle();
  return service.sent(sd_bus_reply_method_return(call, ""));
}

int BusControlService::onDump(sd_bus_message* call, void* self, sd_bus_error*) {
  auto& service = of(self);
  return service.sent(sd_bus_reply_method_return(call, "s", service.controls_.dump().c_str()));
}

int BusControlService::onReset(sd_bus_message* call, void* self, sd_bus_error*) {
  auto& service = of(self);
  service.controls_.reset();
  service.hooks_.settle();
  return service.sent(sd_bus_reply_method_return(call, ""));
}

int BusControlService::onQuit(sd_bus_message* call, void* self, sd_bus_error*) {
  auto& service = of(self);
  service.hooks_.quit();
  return service.sent(sd_bus_reply_method_return(call, ""));
}

void BusControlService::announce(Controls::Snapshot const& changed) {
  for (auto const& [key, value] : changed) {
    sd_bus_message* signal = nullptr;
    if (sd_bus_message_new_signal(bus_, &signal, kControlPath, kControlInterface, "Changed") < 0) return;
    MessagePointer const message(signal);
    if (sd_bus_message_append_basic(signal, SD_BUS_TYPE_STRING, key.c_str()) < 0) return;
    if (appendBytes(signal, value) < 0) return;
    sd_bus_send(bus_, signal, nullptr);
  }
  sd_bus_flush(bus_);
}

}  // namespace

ControlService::Opened ControlService::open(sd_bus* bus, Controls& controls, Hooks hooks) {
  auto service = std::make_unique<BusControlService>(bus, controls, std::move(hooks));
  int const result = service->start();
  if (result < 0) return {nullptr, std::string("The controls cannot be served: ") + std::strerror(-result) + "."};
  return {std::move(service), {}};
}

}  // namespace morla::captureone
