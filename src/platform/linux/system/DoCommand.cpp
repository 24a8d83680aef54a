#include "platform/linux/system/DoCommand.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/linux/system/BusConnection.h"
#include "platform/linux/system/InstanceService.h"

namespace morla::linux {
namespace {

constexpr std::string_view kActions[] = {"openAlerte",          "openSettings",           "openMenuSettings",
                                         "openAirdropSettings", "toggleWindowMode",       "toggleCheckMode",
                                         "checkForUpdates",     "openAutomationSettings", "quit"};

/// MORLA answers within a turn of its loop, unless a modal question stands on the screen.
constexpr std::uint64_t kPatienceMicroseconds = 10'000'000;

int complain(int status, std::string const& message) {
  std::fprintf(stderr, "morla do: %s\n", message.c_str());
  return status;
}

struct Reply {
  enum class Kind { outcome, nobody, failure };
  Kind kind = Kind::failure;
  std::string text;  ///< the outcome, or what went wrong
};

Reply ask(sd_bus* bus, std::string const& action) {
  sd_bus_message* made = nullptr;
  int result = sd_bus_message_new_method_call(bus, &made, kInstanceName, kInstancePath, kInstanceInterface, "Do");
  BusMessage const call(result >= 0 ? made : nullptr);
  if (result >= 0) result = sd_bus_message_append_basic(made, 's', action.c_str());
  if (result >= 0) result = sd_bus_message_set_auto_start(made, 0);
  scriptingbus::BusError error;
  sd_bus_message* answer = nullptr;
  if (result >= 0) result = sd_bus_call(bus, made, kPatienceMicroseconds, error.out(), &answer);
  BusMessage const received(result >= 0 ? answer : nullptr);
  char const* outcome = nullptr;
  if (result >= 0) result = sd_bus_message_read_basic(answer, 's', &outcome);
  if (result >= 0) return {Reply::Kind::outcome, outcome};
  bool const isAbsent = error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER);
  return {isAbsent ? Reply::Kind::nobody : Reply::Kind::failure, std::strerror(-result)};
}

}  // namespace

std::string doCommandHelp() {
  std::string help =
      "  morla do ACTION                                               asks the running MORLA; actions:\n";
  for (auto const action : kActions) help += "    " + std::string(action) + '\n';
  return help;
}

int doCommand(std::vector<std::string> const& arguments) {
  if (arguments.size() != 1 || std::ranges::find(kActions, arguments[0]) == std::end(kActions)) {
    complain(2, arguments.size() == 1 ? "unknown action '" + arguments[0] + "'" : "one action is expected");
    std::fputs(doCommandHelp().c_str(), stderr);
    return 2;
  }
  auto const opened = openSessionBus();
  if (!opened.bus) return complain(1, opened.failure);
  auto const reply = ask(opened.bus.get(), arguments[0]);
  if (reply.kind == Reply::Kind::nobody) return complain(1, "MORLA is not running on this desktop");
  if (reply.kind == Reply::Kind::failure) return complain(1, "MORLA does not answer: " + reply.text);
  if (reply.text == textOf(platform::ActionOutcome::done)) return 0;
  if (reply.text == textOf(platform::ActionOutcome::unknown)) {
    return complain(1, "the running MORLA does not know '" + arguments[0] + "'");
  }
  return complain(1, "'" + arguments[0] + "' is not available now");
}

}  // namespace morla::linux
