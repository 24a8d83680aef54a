#include "platform/linux/system/ScriptableApplications.h"

#include <systemd/sd-bus.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

namespace morla::linux {
namespace {

constexpr char kBusName[] = "org.freedesktop.DBus";
constexpr char kBusPath[] = "/org/freedesktop/DBus";
constexpr char kScriptingPath[] = "/scripting";
constexpr char kScriptingInterface[] = "app.morla.Scripting1";

bool isWellKnown(std::string_view name) {
  return !name.starts_with(':') && name != kBusName;
}

}  // namespace

struct ScriptableApplications::Owner {
  enum class State { asking, scriptable, notScriptable };

  ScriptableApplications& applications;
  std::string busName;
  State state = State::asking;
  std::int64_t processIdentifier = 0;
  std::string localizedName;
  BusSlot call;  ///< the question that is under way; an answer after its end is dropped by the library
};

ScriptableApplications::ScriptableApplications(BusConnection& bus) : bus_(bus) {
  auto const changed = [](sd_bus_message* signal, void* self, sd_bus_error*) {
    char const* name = nullptr;
    char const* before = nullptr;
    char const* after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) >= 0 && isWellKnown(name)) {
      static_cast<ScriptableApplications*>(self)->ownerChanged(name, after[0] != '\0');
    }
    return 0;
  };
  auto const listed = [](sd_bus_message* reply, void* self, sd_bus_error*) {
    return static_cast<ScriptableApplications*>(self)->listArrived(reply);
  };
  // The match goes first, so that a name that comes while the list is made is in the one or the other.
  sd_bus_slot* slot = nullptr;
  int result = sd_bus_match_signal_async(bus_.get(), &slot, kBusName, kBusPath, kBusName, "NameOwnerChanged", changed,
                                         nullptr, this);
  if (result >= 0) match_.reset(slot);
  result = sd_bus_call_method_async(bus_.get(), &slot, kBusName, kBusPath, kBusName, "ListNames", listed, this, "");
  if (result >= 0) {
    list_.reset(slot);
  } else {
    isListed_ = true;
  }
  bus_.update();
}

ScriptableApplications::~ScriptableApplications() = default;

int ScriptableApplications::listArrived(sd_bus_message* reply) {
  isListed_ = true;
  if (sd_bus_message_is_method_error(reply, nullptr) != 0) return 0;
  if (sd_bus_message_enter_container(reply, 'a', "s") < 0) return 0;
  char const* name = nullptr;
  while (sd_bus_message_read_basic(reply, 's', &name) > 0) {
    if (isWellKnown(name) && !owners_.contains(name)) ownerChanged(name, true);
  }
  return 0;
}

void ScriptableApplications::ownerChanged(std::string const& name, bool hasOwner) {
  owners_.erase(name);
  if (!hasOwner) return;
  auto& owner = owners_[name];
  owner = std::make_unique<Owner>(Owner{*this, name, Owner::State::asking, 0, {}, {}});
  askProcess(*owner);
  bus_.update();
}

void ScriptableApplications::askProcess(Owner& owner) {
  auto const answered = [](sd_bus_message* reply, void* data, sd_bus_error*) {
    auto& asked = *static_cast<Owner*>(data);
    std::uint32_t process = 0;
    bool const isKnown =
        sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read_basic(reply, 'u', &process) > 0;
    // This process is no application to itself, and could not answer while it waits for the others.
    if (!isKnown || static_cast<pid_t>(process) == getpid()) {
      asked.state = Owner::State::notScriptable;
      return 0;
    }
    asked.processIdentifier = process;
    asked.applications.askName(asked);
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  int const result =
      sd_bus_call_method_async(bus_.get(), &slot, kBusName, kBusPath, kBusName, "GetConnectionUnixProcessID", answered,
                               &owner, "s", owner.busName.c_str());
  owner.call.reset(result >= 0 ? slot : nullptr);
  if (result < 0) owner.state = Owner::State::notScriptable;
}

void ScriptableApplications::askName(Owner& owner) {
  auto const answered = [](sd_bus_message* reply, void* data, sd_bus_error*) {
    auto& asked = *static_cast<Owner*>(data);
    char const* text = nullptr;
    bool const isKnown = sd_bus_message_is_method_error(reply, nullptr) == 0 &&
                         sd_bus_message_enter_container(reply, 'v', "s") > 0 &&
                         sd_bus_message_read_basic(reply, 's', &text) > 0;
    asked.state = isKnown ? Owner::State::scriptable : Owner::State::notScriptable;
    if (isKnown) asked.localizedName = text;
    return 0;
  };
  sd_bus_message* made = nullptr;
  int result = sd_bus_message_new_method_call(bus_.get(), &made, owner.busName.c_str(), kScriptingPath,
                                              "org.freedesktop.DBus.Properties", "Get");
  BusMessage const message(result >= 0 ? made : nullptr);
  if (result >= 0) result = sd_bus_message_append(made, "ss", kScriptingInterface, "Name");
  if (result >= 0) result = sd_bus_message_set_auto_start(made, 0);
  sd_bus_slot* slot = nullptr;
  // No time limit: a silent application is counted when it speaks again, and when it ends the bus answers for it.
  if (result >= 0) result = sd_bus_call_async(bus_.get(), &slot, made, answered, &owner, UINT64_MAX);
  // This runs in the callback of the previous question, whose slot is kept by the library until it returns.
  owner.call.reset(result >= 0 ? slot : nullptr);
  if (result < 0) owner.state = Owner::State::notScriptable;
}

bool ScriptableApplications::isWaiting() const {
  return !isListed_ ||
         std::ranges::any_of(owners_, [](auto const& named) { return named.second->state == Owner::State::asking; });
}

void ScriptableApplications::finishFirstEnumeration(std::chrono::steady_clock::time_point deadline) {
  bus_.serveUntil([this] { return !isWaiting(); }, deadline);
}

std::vector<ScriptableApplication> ScriptableApplications::running() const {
  std::vector<ScriptableApplication> result;
  if (!bus_.isOpen()) return result;
  for (auto const& [name, owner] : owners_) {
    if (owner->state != Owner::State::scriptable) continue;
    result.push_back({name, owner->localizedName, owner->processIdentifier});
  }
  return result;
}

std::vector<ScriptableApplication> ScriptableApplications::silent() const {
  std::vector<ScriptableApplication> result;
  if (!bus_.isOpen()) return result;
  for (auto const& [name, owner] : owners_) {
    bool const isSilent = owner->state == Owner::State::asking && owner->processIdentifier != 0;
    if (isSilent) result.push_back({name, {}, owner->processIdentifier});
  }
  return result;
}

}  // namespace morla::linux
