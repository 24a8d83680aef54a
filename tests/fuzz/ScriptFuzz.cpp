#include "Fuzz.h"
#include "ToyApplication.h"
#include "applescript/Lexer.h"

namespace {

using namespace morla::applescript;
using morla::fuzz::require;

void requireWordsInOrder(std::string const& source) {
  std::size_t end = 0;
  auto const words = lex(source);
  for (auto const& word : words) {
    require(word.range.start >= end, "words follow each other");
    end = word.range.start + word.range.length;
    require(end <= source.size(), "a word is part of the source");
  }
  require(!words.empty() && words.back().kind == WordKind::end, "the last word says that the script ends");
}

void requireInside(ScriptFailure const& failure, std::string const& source) {
  require(failure.range.start <= source.size(), "a failure is in the source");
  require(failure.range.length <= source.size() - failure.range.start, "a failure ends in the source");
}

/// Small enough that no script takes long, large enough that each can be reached.
Limits smallLimits() {
  Limits limits;
  limits.steps = 2'000;
  limits.listItems = 1'000;
  limits.textBytes = 10'000;
  return limits;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  auto const source = morla::fuzz::textOf(data, size);
  requireWordsInOrder(source);

  static auto const garden = test::makeGarden();
  static auto const untouched = garden->root;
  garden->root = untouched;
  garden->events.clear();
  test::ToyHost host;
  host.applications = {garden.get()};
  host.shell = [](std::string const& command) { return ShellResult{0, command, ""}; };
  // Both kinds of host: with files (in memory), and without any.
  host.hasFiles = size % 2 == 0;
  host.disk.contents = {{"/Users/me/a.txt", "one\ntwo\n"}, {"/Users/me/b.applescript", "on f(x)\nx + 1\nend f\n"}};

  auto const failure = check(source, host, smallLimits());
  bool const isUntouched = garden->events.empty() && host.commands.empty() && host.tells.empty();
  require(isUntouched && host.disk.contents.size() == 2, "compiling does nothing");
  if (failure) {
    // One of the script's own (`error "" number 0`) need not have them.
    require(failure->number != 0, "a failure to compile has a number");
    require(!failure->message.empty(), "a failure to compile says what it is");
    requireInside(*failure, source);
  }

  TextItemDelimiters delimiters{""};
  auto const outcome = run(source, host, delimiters, smallLimits());
  require(!(outcome.result && outcome.failure), "a script has a value or fails");
  for (auto const& [path, bytes] : host.disk.contents) {
    require(host.hasFiles || path == "/Users/me/a.txt" || path == "/Users/me/b.applescript",
            "nothing is made in a sandbox");
    require(bytes.size() <= 2 * smallLimits().textBytes, "a file is no longer than a text may be");
  }
  if (outcome.failure) requireInside(*outcome.failure, source);
  if (!failure) return 0;
  require(outcome.failure && outcome.failure->number == failure->number && outcome.failure->message == failure->message,
          "what does not compile fails with the same words when it is run");
  return 0;
}
