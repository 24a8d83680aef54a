#include "scriptingbus/ApplicationDirectory.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "scriptingbus/BusCalls.h"
#include "scriptingbus/CallBatch.h"
#include "scriptingbus/Protocol.h"

namespace morla::scriptingbus {

using namespace std::chrono_literals;

static constexpr std::chrono::milliseconds kDaemonTimeout = 10s;
static constexpr std::chrono::milliseconds kNameTimeout = 2s;
/// A program on the bus that is stuck must not hold up every script by the time above.
static constexpr std::chrono::milliseconds kSilenceIsRemembered = 30s;

bool ApplicationDirectory::isRunning(std::string const& busName) {
  auto const lease = pool_.acquire();
  return lease && hasOwner(lease->bus(), busName);
}

std::optional<std::string> ApplicationDirectory::nameOf(std::string const& busName, KnownOwners& owners) {
  auto lease = pool_.acquire();
  if (!lease) return std::nullopt;
  auto uniqueName = ownerOf(lease->bus(), busName);
  if (!uniqueName) return std::nullopt;
  owners[busName] = *uniqueName;
  Owner const owner{busName, std::move(*uniqueName)};
  askForNames(*lease, {owner});
  return knownName(owner);
}

std::vector<ScriptableApplication> ApplicationDirectory::scriptableApplications() {
  auto lease = pool_.acquire();
  if (!lease) return {};
  auto const owners = listOwners(*lease);
  if (lease->bus() == nullptr) return {};
  forgetAllBut(owners);
  askForNames(*lease, owners);
  if (lease->bus() == nullptr) return {};

  std::vector<ScriptableApplication> applications;
  for (Owner const& owner : owners) {
    if (auto name = knownName(owner)) applications.push_back({owner.busName, std::move(*name), 0});
  }
  CallBatch batch(lease->bus());
  for (auto& application : applications) {
    batch.add(newDaemonCall(lease->bus(), "GetConnectionUnixProcessID", application.busName), kDaemonTimeout,
              [&application](sd_bus_message* reply) {
                std::uint32_t process = 0;
                if (sd_bus_message_read_basic(reply, SD_BUS_TYPE_UINT32, &process) > 0) {
                  application.processIdentifier = process;
                }
              });
  }
  if (!batch.run()) lease->discard();
  // Without a process there is no application any more: it went while it was asked about.
  std::erase_if(applications, [](auto const& application) { return application.processIdentifier == 0; });
  return applications;
}

static std::vector<std::string> listNames(sd_bus* bus) {
  auto const call = newDaemonCall(bus, "ListNames");
  sd_bus_message* raw = nullptr;
  if (call == nullptr || sd_bus_call(bus, call.get(), microseconds(kDaemonTimeout), nullptr, &raw) < 0) return {};
  MessagePointer const reply(raw);
  std::vector<std::string> names;
  if (sd_bus_message_enter_container(raw, SD_BUS_TYPE_ARRAY, "s") <= 0) return {};
  char const* name = nullptr;
  while (sd_bus_message_read_basic(raw, SD_BUS_TYPE_STRING, &name) > 0) {
    std::string text = name;
    if (!text.starts_with(':') && text != "org.freedesktop.DBus") names.push_back(std::move(text));
  }
  return names;
}

std::vector<ApplicationDirectory::Owner> ApplicationDirectory::listOwners(ConnectionPool::Lease& lease) {
  std::vector<Owner> owners;
  for (auto& name : listNames(lease.bus())) owners.push_back({std::move(name), {}});
  CallBatch batch(lease.bus());
  for (auto& owner : owners) {
    batch.add(newDaemonCall(lease.bus(), "GetNameOwner", owner.busName), kDaemonTimeout,
              [&owner](sd_bus_message* reply) {
                char const* unique = nullptr;
                if (sd_bus_message_read_basic(reply, SD_BUS_TYPE_STRING, &unique) > 0) owner.uniqueName = unique;
              });
  }
  if (!batch.run()) lease.discard();
  std::erase_if(owners, [](Owner const& owner) { return owner.uniqueName.empty(); });
  // Unique names are numbered (":1.7" before ":1.12") in the order in which programs come to the bus.
  std::ranges::sort(owners, {}, [](Owner const& owner) {
    return std::make_tuple(owner.uniqueName.size(), owner.uniqueName, owner.busName);
  });
  return owners;
}

void ApplicationDirectory::askForNames(ConnectionPool::Lease& lease, std::vector<Owner> const& owners) {
  CallBatch batch(lease.bus());
  for (Owner const& owner : owners) {
    if (!mustBeAsked(owner)) continue;
    auto call = newApplicationCall(lease.bus(), owner.uniqueName, "org.freedesktop.DBus.Properties", "Get");
    if (call == nullptr || sd_bus_message_append(call.get(), "ss", kScriptingInterface, "Name") < 0) continue;
    batch.add(std::move(call), kNameTimeout, [this, &owner](sd_bus_message* reply) { remember(owner, reply); });
  }
  if (!batch.run()) lease.discard();
}

void ApplicationDirectory::remember(Owner const& owner, sd_bus_message* reply) {
  Known known{owner.uniqueName, Known::Answer::notScriptable, {}, std::chrono::steady_clock::now()};
  char const* name = nullptr;
  if (sd_bus_message_is_method_error(reply, SD_BUS_ERROR_NO_REPLY) > 0) {
    known.answer = Known::Answer::silent;
  } else if (sd_bus_message_is_method_error(reply, nullptr) <= 0 && sd_bus_message_read(reply, "v", "s", &name) > 0) {
    known.answer = Known::Answer::scriptable;
    known.applicationName = name;
  }
  std::lock_guard const lock(mutex_);
  known_[owner.busName] = std::move(known);
}

void ApplicationDirectory::forgetAllBut(std::vector<Owner> const& owners) {
  std::set<std::string_view> names;
  for (Owner const& owner : owners) names.insert(owner.busName);
  std::lock_guard const lock(mutex_);
  std::erase_if(known_, [&](auto const& entry) { return !names.contains(entry.first); });
}

bool ApplicationDirectory::mustBeAsked(Owner const& owner) {
  std::lock_guard const lock(mutex_);
  auto const found = known_.find(owner.busName);
  if (found == known_.end() || found->second.uniqueName != owner.uniqueName) return true;
  Known const& known = found->second;
  return known.answer == Known::Answer::silent && std::chrono::steady_clock::now() - known.when > kSilenceIsRemembered;
}

std::optional<std::string> ApplicationDirectory::knownName(Owner const& owner) {
  std::lock_guard const lock(mutex_);
  auto const found = known_.find(owner.busName);
  if (found == known_.end() || found->second.uniqueName != owner.uniqueName ||
      found->second.answer != Known::Answer::scriptable) {
    return std::nullopt;
  }
  return found->second.applicationName;
}

}  // namespace morla::scriptingbus
