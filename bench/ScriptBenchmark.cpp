#include <benchmark/benchmark.h>

#include <string>

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

/// About a megabyte of handlers, of the kind that people write.
[[nodiscard]] std::string longScript() {
  constexpr std::size_t kMegabyte = 1'000'000;
  std::string source;
  for (int i = 0; source.size() < kMegabyte; ++i) {
    source += "on sumOf" + std::to_string(i) + "(theList, limit)\n" +
              "\tset total to 0 -- of what is beyond the limit\n"
              "\trepeat with each in items 1 thru -1 of theList\n"
              "\t\tif (contents of each) is greater than limit and each is not in {\"\", missing value} then\n"
              "\t\t\tset total to total + (each as integer) * 2\n"
              "\t\telse\n"
              "\t\t\ttry\n"
              "\t\t\t\tset end of theList to {name:\"left out\", amount:(text 1 thru 3 of (each as text))}\n"
              "\t\t\ton error message number code\n"
              "\t\t\t\tlog \"error \" & code & \": \" & message\n"
              "\t\t\tend try\n"
              "\t\tend if\n"
              "\tend repeat\n"
              "\treturn total\n"
              "end sumOf" +
              std::to_string(i) + "\n";
  }
  return source;
}

void compileAMegabyte(benchmark::State& state) {
  bench::CaptureOneInProcess host;
  std::string const source = longScript();
  for (auto _ : state) {
    if (applescript::check(source, host)) state.SkipWithError("the script does not compile");
  }
}

/// The script's result must be `expected`, so that nothing is measured that does not do its work.
void runScript(benchmark::State& state, std::string const& source, std::string const& expected) {
  bench::CaptureOneInProcess host;
  for (auto _ : state) {
    applescript::TextItemDelimiters delimiters{""};
    auto const outcome = applescript::run(source, host, delimiters);
    auto const result = outcome.result ? applescript::stringValue(*outcome.result) : std::nullopt;
    if (result != expected) state.SkipWithError("the script answers something else");
  }
}

void addAMillionTimes(benchmark::State& state) {
  runScript(state, "set x to 0\nrepeat with i from 1 to 1000000\nset x to x + 1\nend repeat\nx", "1000000");
}

void buildText(benchmark::State& state) {
  std::string const count = std::to_string(state.range(0));
  runScript(state, "set t to \"\"\nrepeat " + count + " times\nset t to t & \"x\"\nend repeat\nlength of t", count);
}

void buildList(benchmark::State& state) {
  std::string const count = std::to_string(state.range(0));
  runScript(state, "set l to {}\nrepeat with i from 1 to " + count + "\nset end of l to i\nend repeat\ncount l", count);
}

void readList(benchmark::State& state) {
  std::string const count = std::to_string(state.range(0));
  runScript(state,
            "set l to {}\nset n to 0\nrepeat with i from 1 to " + count +
                "\nset end of l to 1\nend repeat\nrepeat with i from 1 to " + count +
                "\nset n to n + (item i of l)\nend repeat\nn",
            count);
}

BENCHMARK(compileStatusScript);
BENCHMARK(compileAndRunStatusScript);
BENCHMARK(answerItsEvents);
BENCHMARK(compileAMegabyte);
BENCHMARK(addAMillionTimes);
BENCHMARK(buildText)->Arg(50'000)->Arg(100'000);
BENCHMARK(buildList)->Arg(50'000)->Arg(100'000);
BENCHMARK(readList)->Arg(50'000)->Arg(100'000);

}  // namespace

BENCHMARK_MAIN();
