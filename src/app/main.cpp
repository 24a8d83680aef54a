#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/MainApp.h"
#include "app/ShortcutHooks.h"
#include "app/Version.h"
#include "base/Trace.h"
#include "platform/BackEnd.h"
#include "platform/Environment.h"

namespace {

constexpr int kFailure = 1;
constexpr int kUsage = 2;

struct CommandLine {
  enum class Wanted { run, help, version, misuse } wanted = Wanted::run;
  std::optional<std::string> traceFile;
  std::string complaint;
};

CommandLine parse(std::vector<std::string> const& arguments) {
  CommandLine line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--help") return {CommandLine::Wanted::help, {}, {}};
    if (arguments[i] == "--version") return {CommandLine::Wanted::version, {}, {}};
    if (arguments[i] != "--trace") return {CommandLine::Wanted::misuse, {}, "unknown argument: " + arguments[i]};
    if (i + 1 == arguments.size()) return {CommandLine::Wanted::misuse, {}, "--trace wants a file"};
    line.traceFile = arguments[++i];
  }
  return line;
}

void printHelp() {
  std::printf(
      "usage: morla [--trace FILE]\n"
      "\n"
      "Watches the camera of a tethered Capture One and stands in the status area until it is told to quit.\n"
      "\n"
      "  --trace FILE   tell what happens, one JSON object a line\n"
      "  --help         this text\n"
      "  --version      the version\n"
      "%s",
      morla::platform::backEndCommandHelp().c_str());
}

struct TraceFile {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file{nullptr, &std::fclose};
  std::unique_ptr<morla::Trace> trace;
};

/// False when the file cannot be written.
bool openTrace(std::string const& path, std::chrono::steady_clock::time_point start, TraceFile& out) {
  out.file.reset(std::fopen(path.c_str(), "we"));  // "e": not handed on to the programs that this one starts
  if (out.file == nullptr) return false;
  out.trace = std::make_unique<morla::Trace>(
      [file = out.file.get()](std::string const& line) {
        std::fwrite(line.data(), 1, line.size(), file);
        std::fputc('\n', file);
        std::fflush(file);
      },
      [start] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
      });
  return true;
}

int runProgram(int argc, char** argv, CommandLine const& line, std::chrono::steady_clock::time_point start) {
  TraceFile trace;
  if (line.traceFile && !openTrace(*line.traceFile, start, trace)) {
    std::fprintf(stderr, "morla: cannot write %s\n", line.traceFile->c_str());
    return kFailure;
  }
  auto opened = morla::platform::openBackEnd(argc, argv);
  if (opened.backEnd == nullptr) {
    std::fprintf(stderr, "morla: %s\n", opened.failure.c_str());
    return kFailure;
  }
  // Never destroyed: observers, monitors and windows end with the process, and nothing has to be taken apart in order.
  auto* backEnd = opened.backEnd.release();
  auto* environment = new morla::platform::Environment(backEnd->platform());
  morla::app::installShortcuts(morla::app::FeatureHooks::shared());
  auto* app = new morla::app::MainApp(*environment);
  int const status = app->main();
  std::fflush(nullptr);
  std::_Exit(status);
}

}  // namespace

int main(int argc, char** argv) {
  auto const start = std::chrono::steady_clock::now();
  std::vector<std::string> const arguments(argv + 1, argv + argc);
  if (auto const status = morla::platform::runBackEndCommand(arguments)) return *status;

  auto const line = parse(arguments);
  switch (line.wanted) {
    case CommandLine::Wanted::help:
      printHelp();
      return 0;
    case CommandLine::Wanted::version:
      std::printf("MORLA %s\n", morla::app::kVersion);
      return 0;
    case CommandLine::Wanted::misuse:
      std::fprintf(stderr, "morla: %s\nTry 'morla --help'.\n", line.complaint.c_str());
      return kUsage;
    case CommandLine::Wanted::run:
      break;
  }
  return runProgram(argc, argv, line, start);
}
