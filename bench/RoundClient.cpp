#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "StatusRound.h"
#include "platform/linux/scripting/BusScriptRunner.h"
#include "scriptingbus/BusCalls.h"
#include "scriptingbus/EventCodec.h"
#include "scriptingbus/Protocol.h"

/// Rounds of the status script over the session bus, and between them the same events as bare calls of sd-bus, against
/// the Capture One that runs there. Writes a line for each round: what it was (`script` or `bare`), its microseconds,
/// and how often this thread waited in it.
///
///     usage: bench_round ROUNDS MILLISECONDS-BETWEEN-ROUNDS
namespace {

using namespace morla;
using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(std::string const& why) {
  std::fprintf(stderr, "bench_round: %s\n", why.c_str());
  std::exit(EXIT_FAILURE);
}

long waits() {
  rusage usage{};
  getrusage(RUSAGE_THREAD, &usage);
  return usage.ru_nvcsw;
}

void measure(char const* what, std::function<void()> const& round) {
  auto const waitsBefore = waits();
  auto const start = Clock::now();
  round();
  std::chrono::duration<double, std::micro> const took = Clock::now() - start;
  std::printf("%s %.1f %ld\n", what, took.count(), waits() - waitsBefore);
}

/// Only what any client of the bus must do: write the call, wait, read the reply.
void sendBare(sd_bus* bus, std::string const& owner, std::vector<applescript::AppleEvent> const& events) {
  for (auto const& event : events) {
    auto const call = scriptingbus::newApplicationCall(bus, owner, scriptingbus::kScriptingInterface, "Send");
    if (call == nullptr || scriptingbus::writeEvent(call.get(), event)) fail("an event cannot be written");
    sd_bus_message* raw = nullptr;
    if (sd_bus_call(bus, call.get(), scriptingbus::microseconds(event.timeout), nullptr, &raw) < 0) fail("no reply");
    scriptingbus::MessagePointer const reply(raw);
    if (!std::holds_alternative<applescript::Value>(scriptingbus::readReply(raw))) fail("an event was refused");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) fail("usage: bench_round ROUNDS MILLISECONDS-BETWEEN-ROUNDS");
  int const rounds = std::atoi(argv[1]);
  std::chrono::milliseconds const pause(std::atoi(argv[2]));

  linux::ScriptingServices services(linux::Bundles({}), privacy::PermissionStore::ofUser(), "app.morla.MORLA", nullptr);
  linux::BusScriptRunner runner(services);
  auto const source = bench::statusScript();
  auto const events = bench::eventsOfARound();
  auto const lease = services.pool.acquire();
  if (!lease) fail("there is no session bus");
  auto const owner = scriptingbus::ownerOf(lease->bus(), captureone::ApplicationIdentity().busName);
  if (!owner) fail("Capture One does not run");

  // The first round fetches the dictionary, which the program does once.
  if (auto const reply = runner.execute(source); !reply.text) fail("the script failed: " + reply.error->message);
  for (int i = 0; i < rounds; ++i) {
    std::this_thread::sleep_for(pause);
    measure("script", [&] { (void)runner.execute(source); });
    std::this_thread::sleep_for(pause);
    measure("bare", [&] { sendBare(lease->bus(), *owner, events); });
  }
  return EXIT_SUCCESS;
}
