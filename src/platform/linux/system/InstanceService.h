#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Application.h"
#include "platform/linux/system/BusConnection.h"

namespace morla::linux {

/// Where the running MORLA is found on the session bus.
inline constexpr char kInstanceName[] = "app.morla.MORLA.Instance";
inline constexpr char kInstancePath[] = "/instance";
inline constexpr char kInstanceInterface[] = "app.morla.Instance1";

/// How an outcome travels.
[[nodiscard]] std::string_view textOf(platform::ActionOutcome outcome);

/// Makes this process the one MORLA of the desktop, and takes actions that are asked for over the bus. Main thread.
class InstanceService {
 public:
  using Handler = std::function<platform::ActionOutcome(std::string_view action)>;

  enum class Claim { owned, alreadyRunning, failed };

  /// `bus` outlives the service.
  InstanceService(BusConnection& bus, MainLoop& loop);
  ~InstanceService();
  InstanceService(InstanceService const&) = delete;
  InstanceService& operator=(InstanceService const&) = delete;

  /// Asks the bus for the name, and waits for the bus's own answer, of which it is sure.
  [[nodiscard]] Claim claim();

  /// Until there is a handler, every action is unavailable. It runs on a turn of the loop of its own.
  void setHandler(Handler handler) { handler_ = std::move(handler); }

 private:
  [[nodiscard]] int take(sd_bus_message* call);

  BusConnection& bus_;
  MainLoop& loop_;
  Handler handler_;
  BusSlot object_;
  Lifetime life_;
};

}  // namespace morla::linux
