#pragma once

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "scriptingbus/BusHandles.h"

namespace morla::scriptingbus {

/// Connections to the session bus for blocking calls: one call waits for minutes while others go on, so each has a
/// connection for itself. Opening one costs more than a call does, so they are kept. Any thread.
class ConnectionPool {
 public:
  /// One connection, for one thread, until this object goes.
  class Lease {
   public:
    Lease(ConnectionPool& pool, BusPointer bus) : pool_(&pool), bus_(std::move(bus)) {}
    Lease(Lease&&) noexcept = default;
    Lease& operator=(Lease&&) = delete;
    ~Lease() {
      if (bus_ != nullptr) pool_->giveBack(std::move(bus_));
    }

    [[nodiscard]] sd_bus* bus() const { return bus_.get(); }
    /// Ends the connection instead of keeping it: a reply that nobody waits for any more may still arrive on it.
    void discard() { bus_.reset(); }

   private:
    ConnectionPool* pool_;
    BusPointer bus_;
  };

  /// Nothing when there is no session bus.
  [[nodiscard]] std::optional<Lease> acquire();

 private:
  void giveBack(BusPointer bus);

  std::mutex mutex_;
  std::vector<BusPointer> idle_;
};

}  // namespace morla::scriptingbus
