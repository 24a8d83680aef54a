#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/system/BusConnection.h"

namespace morla::linux {

/// A running application that answers the scripting interface.
struct ScriptableApplication {
  std::string identifier;  ///< the bus name that it owns
  std::string name;        ///< localized
  std::int64_t processIdentifier = 0;
};

/// Watches the well-known names of the session bus and asks each new owner once for its name by the scripting
/// interface. Nothing here waits for an application, or starts one: a silent owner is counted when it answers, and one
/// that refuses is remembered as not scriptable until the name changes hands. Main thread.
class ScriptableApplications {
 public:
  explicit ScriptableApplications(BusConnection& bus);
  ~ScriptableApplications();
  ScriptableApplications(ScriptableApplications const&) = delete;
  ScriptableApplications& operator=(ScriptableApplications const&) = delete;

  /// Waits until every owner of the beginning has answered or refused, at most to `deadline`.
  void finishFirstEnumeration(std::chrono::steady_clock::time_point deadline);

  [[nodiscard]] std::vector<ScriptableApplication> running() const;

  /// Those that own a name and have neither answered nor refused yet; their `name` is empty.
  [[nodiscard]] std::vector<ScriptableApplication> silent() const;

 private:
  struct Owner;

  void ownerChanged(std::string const& name, bool hasOwner);
  void askProcess(Owner& owner);
  void askName(Owner& owner);
  [[nodiscard]] bool isWaiting() const;
  int listArrived(sd_bus_message* reply);

  BusConnection& bus_;
  bool isListed_ = false;
  std::map<std::string, std::unique_ptr<Owner>> owners_;
  BusSlot match_;
  BusSlot list_;
};

}  // namespace morla::linux
