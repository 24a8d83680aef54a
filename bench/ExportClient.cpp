#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/linux/scripting/BusScriptRunner.h"

/// Export scripts over the session bus against the Capture One that runs there, put back by the clean-up script each
/// time, and between them the export's two shell commands alone. Writes a line for each: what it was (`script` or
/// `shell`) and its microseconds.
///
///     usage: bench_export ROUNDS
namespace {

using namespace morla;
using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(std::string const& why) {
  std::fprintf(stderr, "bench_export: %s\n", why.c_str());
  std::exit(EXIT_FAILURE);
}

std::string text(std::string const& name) {
  std::ifstream stream(MORLA_SCRIPTS_FOLDER "/" + name + ".applescript", std::ios::binary);
  if (!stream) fail("no script " + name);
  return std::string{std::istreambuf_iterator<char>(stream), {}};
}

void tell(char const* what, Clock::time_point start) {
  std::chrono::duration<double, std::micro> const took = Clock::now() - start;
  std::printf("%s %.1f\n", what, took.count());
}

void removeFolders() {
  for (auto const& entry : std::filesystem::directory_iterator("/private/tmp")) {
    if (entry.path().filename().string().starts_with("C1AIRDROP_")) std::filesystem::remove_all(entry.path());
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) fail("usage: bench_export ROUNDS");
  int const rounds = std::atoi(argv[1]);

  linux::ScriptingServices services(linux::Bundles({}), privacy::PermissionStore::ofUser(), "app.morla.MORLA", nullptr);
  linux::BusScriptRunner runner(services);
  auto const exporting = text("airdrop-export-a") + "JPEG" + text("airdrop-export-b");
  // The recipes that are enabled at the simulator's start.
  auto const cleaning = text("airdrop-cleanup-head") + text("airdrop-restore-head") +
                        R"("JPEG pleine taille", "Épreuve rapide")" + text("airdrop-restore-tail") +
                        text("airdrop-cleanup-tail");

  for (int i = 0; i < rounds; ++i) {
    auto start = Clock::now();
    auto const reply = runner.execute(exporting);
    tell("script", start);
    if (!reply.text || !reply.text->ends_with("|JPEG pleine taille,Épreuve rapide")) {
      fail("the export says " + (reply.error ? reply.error->message : reply.text.value_or("nothing")));
    }
    if (auto const cleaned = runner.execute(cleaning); cleaned.error) fail(cleaned.error->message);
    start = Clock::now();
    if (std::system("ls -1 /private/tmp/ 2>/dev/null | grep '^C1AIRDROP_' > /dev/null || true") != 0 ||
        std::system("mkdir -p /private/tmp/C1AIRDROP_0") != 0) {
      fail("a shell command failed");
    }
    tell("shell", start);
    removeFolders();
  }
  return EXIT_SUCCESS;
}
