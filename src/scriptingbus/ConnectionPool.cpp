#include "scriptingbus/ConnectionPool.h"

#include <cstddef>

namespace morla::scriptingbus {

/// More scripts than these at once are rare; the connections beyond end with their calls.
static constexpr std::size_t kMaximumIdle = 8;

/// Takes in what has come since the last call, so that a connection which the bus has closed is noticed here.
static bool isAlive(sd_bus* bus) {
  int result = 1;
  while (result > 0) result = sd_bus_process(bus, nullptr);
  return result == 0 && sd_bus_is_open(bus) > 0;
}

std::optional<ConnectionPool::Lease> ConnectionPool::acquire() {
  for (;;) {
    BusPointer bus;
    {
      std::lock_guard const lock(mutex_);
      if (idle_.empty()) break;
      bus = std::move(idle_.back());
      idle_.pop_back();
    }
    if (isAlive(bus.get())) return Lease(*this, std::move(bus));
  }
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) return std::nullopt;
  return Lease(*this, BusPointer(raw));
}

void ConnectionPool::giveBack(BusPointer bus) {
  if (sd_bus_is_open(bus.get()) <= 0) return;
  std::lock_guard const lock(mutex_);
  if (idle_.size() < kMaximumIdle) idle_.push_back(std::move(bus));
}

}  // namespace morla::scriptingbus
