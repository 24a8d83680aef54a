#include <benchmark/benchmark.h>

#include "WatchedCamera.h"

/// What a published value costs the alert settings' view, before any widget.
namespace {

using namespace morla;

void describeSettings(benchmark::State& state) {
  bench::WatchedCamera camera;
  for (auto _ : state) benchmark::DoNotOptimize(camera.describeSettings());
}

void describeAndCompareSettings(benchmark::State& state) {
  bench::WatchedCamera camera;
  auto const shown = camera.describeSettings();
  for (auto _ : state) {
    bool isSame = camera.describeSettings() == shown;
    benchmark::DoNotOptimize(isSame);
    if (!isSame) state.SkipWithError("two descriptions of the same differ");
  }
}

BENCHMARK(describeSettings);
BENCHMARK(describeAndCompareSettings);

}  // namespace

BENCHMARK_MAIN();
