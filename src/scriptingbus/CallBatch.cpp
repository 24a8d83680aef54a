#include "scriptingbus/CallBatch.h"

#include <cstdint>
#include <utility>

#include "scriptingbus/BusCalls.h"

namespace morla::scriptingbus {

void CallBatch::add(MessagePointer call, std::chrono::milliseconds timeout, Receiver receiver) {
  if (call == nullptr) return;
  auto entry = std::make_unique<Call>(Call{this, std::move(receiver), nullptr});
  sd_bus_slot* slot = nullptr;
  if (sd_bus_call_async(bus_, &slot, call.get(), onReply, entry.get(), microseconds(timeout)) < 0) return;
  entry->slot.reset(slot);
  calls_.push_back(std::move(entry));
  ++due_;
}

bool CallBatch::run() {
  while (due_ > 0) {
    int const result = sd_bus_process(bus_, nullptr);
    if (result < 0) return false;
    if (result == 0 && sd_bus_wait(bus_, UINT64_MAX) < 0) return false;
  }
  return true;
}

int CallBatch::onReply(sd_bus_message* reply, void* userdata, sd_bus_error*) {
  auto& call = *static_cast<Call*>(userdata);
  --call.batch->due_;
  call.receiver(reply);
  return 1;
}

}  // namespace morla::scriptingbus
