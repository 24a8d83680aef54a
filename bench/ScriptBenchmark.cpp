#include <benchmark/benchmark.h>

#include "StatusRound.h"
#include "applescript/Interpreter.h"

/// The interpreter alone: the application it talks to is in this process.
namespace {

using namespace morla;

void compileStatusScript(benchmark::State& state) {
  bench::CaptureOneInProcess host;
  auto const source = bench::statusScript();
  for (auto _ : state) benchmark::DoNotOptimize(applescript::check(source, host));
}

void compileAndRunStatusScript(benchmark::State& state) {
  bench::CaptureOneInProcess host;
  auto const source = bench::statusScript();
  for (auto _ : state) {
    applescript::TextItemDelimiters delimiters{""};
    benchmark::DoNotOptimize(applescript::run(source, host, delimiters));
  }
}

/// What the application itself takes for the script's events.
void answerItsEvents(benchmark::State& state) {
  bench::CaptureOneInProcess host;
  auto const events = bench::eventsOfARound();
  for (auto _ : state) {
    for (auto const& event : events) benchmark::DoNotOptimize(host.objects().handle(event));
  }
}

BENCHMARK(compileStatusScript);
BENCHMARK(compileAndRunStatusScript);
BENCHMARK(answerItsEvents);

}  // namespace

BENCHMARK_MAIN();
