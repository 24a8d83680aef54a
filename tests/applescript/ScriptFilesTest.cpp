#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "ToyApplication.h"
#include "applescript/Interpreter.h"

/// Each file in scripts/ is a test. Comment lines say what is to happen:
///
///     -- expect: TEXT              the result's string value
///     -- expect source: TEXT       the result as a script would write it
///     -- expect none               the script ends without a value
///     -- expect list               the value has no string value
///     -- expect error: NUMBER      the script fails, or does not compile
///     -- expect message: TEXT      with this message
///     -- expect log: TEXT          one for each line that `log` wrote, in order
///     -- expect events: ID ID …    what the application "Garden" was sent, class and id, in order
///
/// Every file must expect something of its end.
namespace morla::applescript::test {
namespace {

struct Expectations {
  std::optional<std::string> text;
  std::optional<std::string> source;
  bool isNone = false;
  bool isList = false;
  std::optional<std::int64_t> error;
  std::optional<std::string> message;
  std::vector<std::string> log;
  std::optional<std::string> events;
};

[[nodiscard]] Expectations expectationsIn(std::string const& source) {
  Expectations result;
  std::string lines = source;
  std::ranges::replace(lines, '\r', '\n');
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) {
    auto const after = [&line](std::string_view prefix) -> std::optional<std::string> {
      if (!line.starts_with(prefix)) return std::nullopt;
      return line.substr(prefix.size());
    };
    if (auto text = after("-- expect: ")) result.text = text;
    if (line == "-- expect:") result.text = "";
    if (auto text = after("-- expect source: ")) result.source = text;
    if (line == "-- expect none") result.isNone = true;
    if (line == "-- expect list") result.isList = true;
    if (auto text = after("-- expect error: ")) result.error = std::stoll(*text);
    if (auto text = after("-- expect message: ")) result.message = text;
    if (auto text = after("-- expect log: ")) result.log.push_back(*text);
    if (auto text = after("-- expect events: ")) result.events = text;
  }
  return result;
}

[[nodiscard]] std::string readFile(std::filesystem::path const& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class ScriptFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(ScriptFile, DoesWhatItsCommentsExpect) {
  std::string const source = readFile(GetParam());
  Expectations const expected = expectationsIn(source);
  ASSERT_TRUE(expected.text || expected.source || expected.isNone || expected.isList || expected.error)
      << GetParam() << " expects nothing";

  auto const garden = makeGarden();
  ToyHost host;
  host.applications = {garden.get()};
  host.folders = {"/", "/Users/me", "/Users/me/Pictures", "/Volumes/Disk/Job"};
  host.disk.contents = {{"/Users/me/Notes.txt", "one\ntwo\nthree\n"},
                        {"/Users/me/Library.applescript", "property total : 2\non add(n)\ntotal + n\nend add\n"},
                        {"/Users/me/Compiled.scpt", "FasdUAS 1.101.10"},
                        {"/Users/me/.hidden", ""}};
  host.environment = {{"USER", "me"}};
  host.shell = [](std::string const& command) -> ShellResult {
    if (command.starts_with("echo ")) return {0, command.substr(5) + "\n", ""};
    if (command == "lines") return {0, "one\ntwo\n\n", ""};
    if (command == "silent failure") return {3, "", ""};
    return {1, "", "sh: " + command + ": not found\n"};
  };
  TextItemDelimiters delimiters{""};
  ScriptOutcome const outcome = run(source, host, delimiters, {}, {{}, true, "/Users/me/script.applescript"});

  if (expected.error) {
    ASSERT_TRUE(outcome.failure) << "it ended with "
                                 << (outcome.result ? stringValue(*outcome.result).value_or("a list") : "no value");
    EXPECT_EQ(outcome.failure->number, *expected.error) << outcome.failure->message;
    EXPECT_LE(outcome.failure->range.start + outcome.failure->range.length, source.size());
    if (expected.message) {
      EXPECT_EQ(outcome.failure->message, *expected.message);
    }
  } else {
    ASSERT_FALSE(outcome.failure) << outcome.failure->number << ": " << outcome.failure->message << " at '"
                                  << source.substr(outcome.failure->range.start, outcome.failure->range.length) << "'";
    EXPECT_EQ(outcome.result.has_value(), !expected.isNone);
    std::optional<std::string> const text = outcome.result ? stringValue(*outcome.result) : std::nullopt;
    if (expected.source) {
      EXPECT_EQ(outcome.source, expected.source);
    } else {
      EXPECT_EQ(text, expected.text);
    }
  }
  EXPECT_EQ(host.logged, expected.log);
  if (expected.events) {
    std::string events;
    for (AppleEvent const& event : garden->events) {
      events += (events.empty() ? "" : " ") + event.eventClass.text() + event.eventId.text();
    }
    EXPECT_EQ(events, *expected.events);
  }
}

[[nodiscard]] std::vector<std::filesystem::path> scriptFiles() {
  std::vector<std::filesystem::path> files;
  for (auto const& entry : std::filesystem::directory_iterator(MORLA_SOURCE_DIR "/tests/applescript/scripts")) {
    if (entry.path().extension() == ".applescript") files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

[[nodiscard]] std::string nameOfTest(testing::TestParamInfo<std::filesystem::path> const& test) {
  std::string name = test.param.stem().string();
  std::ranges::replace_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptFile, testing::ValuesIn(scriptFiles()), nameOfTest);

}  // namespace
}  // namespace morla::applescript::test
