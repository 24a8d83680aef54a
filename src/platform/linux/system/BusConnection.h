#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "scriptingbus/BusHandles.h"

class QSocketNotifier;

namespace morla::linux {

struct BusSlotDeleter {
  void operator()(sd_bus_slot* slot) const;
};
/// A pending call, a match or a served object; ends with it.
using BusSlot = std::unique_ptr<sd_bus_slot, BusSlotDeleter>;
using BusMessage = scriptingbus::MessagePointer;
using Bus = scriptingbus::BusPointer;

/// A connection to the session bus of this process's own, or nothing and the reason.
struct BusOrFailure {
  Bus bus;
  std::string failure;
};
[[nodiscard]] BusOrFailure openSessionBus();

/// A bus connection that the main loop serves: what arrives is handled on later turns. Main thread.
class BusConnection {
 public:
  BusConnection(Bus bus, MainLoop& loop);
  ~BusConnection();
  BusConnection(BusConnection const&) = delete;
  BusConnection& operator=(BusConnection const&) = delete;

  [[nodiscard]] sd_bus* get() const { return bus_.get(); }
  [[nodiscard]] bool isOpen() const { return isOpen_; }

  /// Call it after anything was sent: the loop then waits for what the connection waits for.
  void update();

  /// Serves the connection here and now until `isDone` or until the deadline of a clock that only goes forward.
  void serveUntil(std::function<bool()> const& isDone, std::chrono::steady_clock::time_point deadline);

 private:
  void serve();
  void lose(int error);

  Bus bus_;
  MainLoop& loop_;
  bool isOpen_ = true;
  bool isServing_ = false;
  std::unique_ptr<QSocketNotifier> readable_;
  std::unique_ptr<QSocketNotifier> writable_;
  Subscription timeout_;
  std::uint64_t timeoutAt_ = UINT64_MAX;  ///< what `timeout_` was set for
  Lifetime life_;
};

}  // namespace morla::linux
