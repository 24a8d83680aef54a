#include "platform/linux/system/InstanceService.h"

#include <systemd/sd-bus.h>

#include <cerrno>

namespace morla::linux {

std::string_view textOf(platform::ActionOutcome outcome) {
  switch (outcome) {
    case platform::ActionOutcome::done:
      return "done";
    case platform::ActionOutcome::unknown:
      return "unknown";
    case platform::ActionOutcome::unavailable:
      return "unavailable";
  }
  return "unavailable";
}

InstanceService::InstanceService(BusConnection& bus, MainLoop& loop) : bus_(bus), loop_(loop) {}

InstanceService::~InstanceService() = default;

int InstanceService::take(sd_bus_message* call) {
  char const* action = nullptr;
  int const result = sd_bus_message_read_basic(call, 's', &action);
  if (result < 0) return result;
  std::shared_ptr<sd_bus_message> const kept(sd_bus_message_ref(call), scriptingbus::MessageReleaser());
  // On a turn of its own: the bus may be served in the middle of something that waits for it.
  loop_.post(life_.weak([this, kept, name = std::string(action)] {
    auto const outcome = handler_ ? handler_(name) : platform::ActionOutcome::unavailable;
    (void)sd_bus_reply_method_return(kept.get(), "s", std::string(textOf(outcome)).c_str());
    bus_.update();
  }));
  return 1;
}

InstanceService::Claim InstanceService::claim() {
  static constexpr auto doCalled = [](sd_bus_message* call, void* self, sd_bus_error*) {
    return static_cast<InstanceService*>(self)->take(call);
  };
  static sd_bus_vtable const kTable[] = {
      SD_BUS_VTABLE_START(0),
      SD_BUS_METHOD("Do", "s", "s", doCalled, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_VTABLE_END,
  };
  sd_bus_slot* slot = nullptr;
  // The object is there before the name is: who sees the name can call it.
  if (sd_bus_add_object_vtable(bus_.get(), &slot, kInstancePath, kInstanceInterface, kTable, this) < 0) {
    return Claim::failed;
  }
  object_.reset(slot);
  int const result = sd_bus_request_name(bus_.get(), kInstanceName, 0);
  bus_.update();
  if (result >= 0) return Claim::owned;
  return result == -EEXIST ? Claim::alreadyRunning : Claim::failed;
}

}  // namespace morla::linux
