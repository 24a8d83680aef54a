#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "scriptingbus/BusHandles.h"

namespace morla::scriptingbus {

/// Several method calls under way at once, so that a question to many costs the time of the slowest and not the sum.
class CallBatch {
 public:
  /// Gets the reply, which may be an error; NoReply when none came in time.
  using Receiver = std::function<void(sd_bus_message* reply)>;

  explicit CallBatch(sd_bus* bus) : bus_(bus) {}
  CallBatch(CallBatch const&) = delete;
  CallBatch& operator=(CallBatch const&) = delete;

  void add(MessagePointer call, std::chrono::milliseconds timeout, Receiver receiver);

  /// Waits until every call has its reply or has none; calls the receivers on the way. False when the connection broke.
  [[nodiscard]] bool run();

 private:
  struct SlotReleaser {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
  };
  struct Call {
    CallBatch* batch = nullptr;
    Receiver receiver;
    std::unique_ptr<sd_bus_slot, SlotReleaser> slot;
  };
  static int onReply(sd_bus_message* reply, void* userdata, sd_bus_error* error);

  sd_bus* bus_;
  std::vector<std::unique_ptr<Call>> calls_;
  std::size_t due_ = 0;
};

}  // namespace morla::scriptingbus
