#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "captureone/control/ControlClient.h"

namespace {

using morla::captureone::ControlClient;

enum ExitStatus : int { kDone = 0, kRefused = 1, kUsage = 2, kNotRunning = 3 };

constexpr std::string_view kHelp =
    "usage: captureonectl get KEY\n"
    "       captureonectl set KEY VALUE\n"
    "       captureonectl wait KEY VALUE SECONDS\n"
    "       captureonectl dump | reset | quit\n"
    "       captureonectl --help | --version\n"
    "\n"
    "Reads and changes the simulated Capture One that runs in this session. `set` returns when the window shows the\n"
    "change; `wait` returns as soon as KEY is exactly VALUE, and waits for the simulator itself when it does not run;\n"
    "`dump` prints all keys as one JSON object.\n"
    "\n"
    "Exit status: 0 done, 1 refused, unknown or read-only key, or time over, 2 wrong usage, 3 not running.\n";

void print(std::string_view text, std::FILE* stream) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

int report(ControlClient::Outcome const& outcome) {
  if (outcome.result != ControlClient::Result::done) {
    print("captureonectl: " + outcome.text + "\n", stderr);
    return outcome.result == ControlClient::Result::notRunning ? kNotRunning : kRefused;
  }
  return kDone;
}

int show(ControlClient::Outcome const& outcome) {
  if (outcome.result == ControlClient::Result::done) print(outcome.text + "\n", stdout);
  return report(outcome);
}

std::optional<std::chrono::duration<double>> secondsFrom(std::string_view text) {
  double seconds = 0;
  auto const result = std::from_chars(text.data(), text.data() + text.size(), seconds);
  bool const isNumber = result.ec == std::errc() && result.ptr == text.data() + text.size();
  // A bound that the clock can hold: a year.
  if (!isNumber || !std::isfinite(seconds) || seconds < 0 || seconds > 31'536'000) return {};
  return std::chrono::duration<double>(seconds);
}

struct Command {
  std::string_view name;
  std::size_t arguments;
};
constexpr Command kCommands[] = {{"get", 1}, {"set", 2}, {"wait", 3}, {"dump", 0}, {"reset", 0}, {"quit", 0}};

bool isCommand(std::vector<std::string> const& words) {
  for (auto const& each : kCommands) {
    if (!words.empty() && words[0] == each.name) return words.size() == each.arguments + 1;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> const words(argv + 1, argv + argc);
  if (words.size() == 1 && words[0] == "--help") {
    print(kHelp, stdout);
    return kDone;
  }
  if (words.size() == 1 && words[0] == "--version") {
    print("captureonectl " MORLA_VERSION "\n", stdout);
    return kDone;
  }
  std::optional<std::chrono::duration<double>> time;
  if (words.size() == 4) time = secondsFrom(words[3]);
  if (!isCommand(words) || (words[0] == "wait" && !time)) {
    print(kHelp, stderr);
    return kUsage;
  }
  auto client = ControlClient::open();
  if (!client) {
    print("captureonectl: there is no session bus, so the simulator is not running\n", stderr);
    return kNotRunning;
  }
  if (words[0] == "get") return show(client->get(words[1]));
  if (words[0] == "set") return report(client->set(words[1], words[2]));
  if (words[0] == "wait") return report(client->wait(words[1], words[2], *time));
  if (words[0] == "dump") return show(client->dump());
  if (words[0] == "reset") return report(client->reset());
  return report(client->quit());
}
