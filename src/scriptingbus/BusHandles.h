#pragma once

#include <systemd/sd-bus.h>

#include <memory>

namespace morla::scriptingbus {

struct BusCloser {
  /// Sends what is still queued first: the last reply of a program that quits must not be lost.
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
using BusPointer = std::unique_ptr<sd_bus, BusCloser>;

struct MessageReleaser {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using MessagePointer = std::unique_ptr<sd_bus_message, MessageReleaser>;

/// The error that a call on the bus came back with.
class BusError {
 public:
  BusError() = default;
  BusError(BusError const&) = delete;
  BusError& operator=(BusError const&) = delete;
  ~BusError() { sd_bus_error_free(&error_); }

  [[nodiscard]] sd_bus_error* out() { return &error_; }
  [[nodiscard]] bool is(char const* name) const { return sd_bus_error_has_name(&error_, name) > 0; }
  [[nodiscard]] char const* message() const {
    if (error_.message != nullptr) return error_.message;
    return error_.name != nullptr ? error_.name : "unknown error";
  }

 private:
  sd_bus_error error_ = {nullptr, nullptr, 0};
};

}  // namespace morla::scriptingbus
