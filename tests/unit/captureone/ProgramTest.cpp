// The real programs, without a screen, on a session bus of their own. Nothing here waits for a time to pass: a program
// is there when its bus name is, and the control tool itself waits for changes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <optional>
#include <string>

#include "captureone/EmbeddedDictionary.h"
#include "captureone/scripting/Classes.h"
#include "scriptingbus/AppleEventClient.h"
#include "support/CapturedProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace morla::captureone {
namespace {

using applescript::AppleEvent;
using applescript::Code;
using applescript::EventError;
using applescript::EventReply;
using applescript::KeyForm;
using applescript::Specifier;
using applescript::TypeCode;
using applescript::Value;
using support::EnvironmentVariable;
using support::Finished;
using support::PrivateBus;
using Process = support::CapturedProcess;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Longer than any step takes on a machine that is busy with other things; no test waits for it to be over.
constexpr char kPatience[] = "60";

AppleEvent countDocuments() {
  return AppleEvent{Code("core"), Code("cnte"), {}, {{Code("kocl"), TypeCode{codes::kDocument}}}};
}
AppleEvent getName() {
  auto name = std::make_shared<Specifier const>(Specifier{Code("prop"), KeyForm::property, TypeCode{codes::kName}, {}});
  return AppleEvent{Code("core"), Code("getd"), std::move(name), {}};
}

class ProgramTest : public ::testing::Test {
 protected:
  Finished ctl(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), MORLA_CONTROL_PROGRAM);
    return Process(arguments).finish();
  }
  int status(std::vector<std::string> arguments) { return ctl(std::move(arguments)).status; }
  std::string get(std::string const& key) {
    auto const result = ctl({"get", key});
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output.substr(0, result.output.find('\n'));
  }
  /// Ready when this returns: it answers its controls.
  [[nodiscard]] Process start() {
    Process simulator({MORLA_SIMULATOR_PROGRAM});
    EXPECT_EQ(status({"wait", "events", "0", kPatience}), 0);
    return simulator;
  }
  EventReply send(AppleEvent const& event) { return client_.send("com.captureone.captureone16", event); }
  static std::int64_t errorOf(EventReply const& reply) {
    auto const* error = std::get_if<EventError>(&reply);
    return error == nullptr ? 0 : error->number;
  }
  static Value valueOf(EventReply const& reply) {
    auto const* value = std::get_if<Value>(&reply);
    return value == nullptr ? Value("(error)") : *value;
  }

  support::TemporaryFolder home_;  // documents have folders there
  EnvironmentVariable homeVariable_{"HOME", home_.path().string()};
  EnvironmentVariable platform_{"QT_QPA_PLATFORM", "offscreen"};  // before the bus, which hands it to what it starts
  PrivateBus bus_;
  scriptingbus::ConnectionPool pool_;
  scriptingbus::AppleEventClient client_{pool_};
};

TEST_F(ProgramTest, SaysWhatItIsAndHowItIsUsedWithoutABusOrAScreen) {
  for (auto const* program : {MORLA_SIMULATOR_PROGRAM, MORLA_CONTROL_PROGRAM}) {
    auto const help = Process({program, "--help"}).finish();
    EXPECT_EQ(help.status, 0) << program;
    EXPECT_THAT(help.output, HasSubstr("usage: ")) << program;
    auto const version = Process({program, "--version"}).finish();
    EXPECT_EQ(version.status, 0) << program;
    EXPECT_THAT(version.output, HasSubstr(std::filesystem::path(program).filename().string() + " ")) << program;
    auto const wrong = Process({program, "--wrong"}).finish();
    EXPECT_EQ(wrong.status, 2) << program;
    EXPECT_THAT(wrong.errors, HasSubstr("usage: ")) << program;
  }
}

TEST_F(ProgramTest, DocumentsHaveTheirFoldersAmongTheUsersPictures) {
  auto const simulator = start();
  auto const captures = get("captures");
  EXPECT_TRUE(captures.starts_with(home_.path().string())) << captures;
  EXPECT_TRUE(std::filesystem::is_directory(captures)) << captures;
}

TEST_F(ProgramTest, PicturesNeedAFolder) {
  EXPECT_EQ(Process({MORLA_SIMULATOR_PROGRAM, "--pictures"}).finish().status, 2);
  EXPECT_EQ(Process({MORLA_SIMULATOR_PROGRAM, "--pictures", ""}).finish().status, 2);
  EXPECT_EQ(Process({MORLA_SIMULATOR_PROGRAM, "--pictures", home_.path().string()}).finish().status, 1);
}

TEST_F(ProgramTest, TheControlToolRefusesWrongUsage) {
  std::vector<std::vector<std::string>> const rows{{},
                                                   {"get"},
                                                   {"get", "a", "b"},
                                                   {"set", "a"},
                                                   {"wait", "a", "b"},
                                                   {"wait", "a", "b", "soon"},
                                                   {"wait", "a", "b", "-1"},
                                                   {"wait", "a", "b", "nan"},
                                                   {"dump", "all"},
                                                   {"reset", "x"},
                                                   {"quit", "x"},
                                                   {"start"}};
  for (auto const& row : rows) EXPECT_EQ(status(row), 2) << (row.empty() ? "nothing" : row[0]) << " " << row.size();
}

TEST_F(ProgramTest, TheControlToolSaysThatNothingRunsAndStartsNothing) {
  bus_.installService("com.captureone.captureone16", MORLA_SIMULATOR_PROGRAM);
  std::vector<std::vector<std::string>> const rows{
      {"get", "events"}, {"set", "camera.iso", "1"}, {"wait", "events", "0", "0.05"}, {"dump"}, {"reset"}, {"quit"}};
  for (auto const& row : rows) {
    auto const result = ctl(row);
    EXPECT_EQ(result.status, 3) << row[0];
    EXPECT_THAT(result.errors, HasSubstr("not running")) << row[0];
    EXPECT_THAT(result.output, IsEmpty()) << row[0];
  }
}

TEST_F(ProgramTest, WithoutASessionBusTheSimulatorFailsAndTheToolSaysThatNothingRuns) {
  EnvironmentVariable const nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_EQ(Process({MORLA_SIMULATOR_PROGRAM}).finish().status, 1);
  EXPECT_EQ(status({"get", "events"}), 3);
}

TEST_F(ProgramTest, GetsSetsDumpsAndResets) {
  auto simulator = start();
  EXPECT_EQ(get("camera.name"), "MX-1 Studio");
  EXPECT_EQ(status({"set", "camera.iso", "Hi 1"}), 0);
  EXPECT_EQ(get("camera.iso"), "Hi 1");
  EXPECT_EQ(status({"set", "fault.reply", "raw \xff"}), 0);
  EXPECT_EQ(get("fault.reply"), "raw \xff");
  auto const dump = ctl({"dump"});
  EXPECT_EQ(dump.status, 0);
  EXPECT_THAT(dump.output, HasSubstr("\"camera.iso\":\"Hi 1\""));
  EXPECT_EQ(status({"reset"}), 0);
  EXPECT_EQ(get("camera.iso"), "100");
  EXPECT_EQ(status({"quit"}), 0);
  EXPECT_EQ(simulator.finish().status, 0);
}

TEST_F(ProgramTest, RefusesWithAReasonAndStatusOne) {
  auto simulator = start();
  struct Row {
    std::vector<std::string> words;
    char const* reason;
  };
  Row const rows[] = {
      {{"get", "bogus"}, "unknown key"},
      {{"set", "bogus", "1"}, "unknown key"},
      {{"set", "events", "1"}, "only be read"},
      {{"set", "camera.power", "\xff"}, "expected true or false"},
      {{"set", "document.open", "99"}, "from 0"},
      {{"wait", "bogus", "1", kPatience}, "unknown key"},
      {{"get", "\xff"}, "UTF-8"},
      {{"wait", "camera.iso", "1", "0.05"}, "time over"},
  };
  for (auto const& row : rows) {
    auto const result = ctl(row.words);
    EXPECT_EQ(result.status, 1) << row.words[0] << " " << row.words[1];
    EXPECT_THAT(result.errors, HasSubstr(row.reason)) << row.words[0] << " " << row.words[1];
  }
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, WaitReturnsWhenAnotherChangesTheValue) {
  auto simulator = start();
  Process waiting({MORLA_CONTROL_PROGRAM, "wait", "camera.iso", "3200", kPatience});
  EXPECT_EQ(status({"set", "camera.iso", "3200"}), 0);
  EXPECT_EQ(waiting.finish().status, 0);
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, WaitOutlastsASimulatorThatIsStartedAgain) {
  {
    auto first = start();
    ASSERT_EQ(status({"quit"}), 0);
    EXPECT_EQ(first.finish().status, 0);
  }
  Process waiting({MORLA_CONTROL_PROGRAM, "wait", "document.open", "2", kPatience});
  auto simulator = start();
  EXPECT_EQ(status({"set", "document.open", "2"}), 0);
  EXPECT_EQ(waiting.finish().status, 0);
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, ASecondCopySaysSoAndFails) {
  auto simulator = start();
  auto const second = Process({MORLA_SIMULATOR_PROGRAM}).finish();
  EXPECT_EQ(second.status, 1);
  EXPECT_THAT(second.errors, HasSubstr("runs already"));
  EXPECT_EQ(get("events"), "0");
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, QuitsWhenTheSessionBusGoesAway) {
  auto simulator = start();
  bus_.kill();
  auto const end = simulator.finish();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.errors, HasSubstr("session bus has gone"));
}

TEST_F(ProgramTest, IsStartedByTheFirstEventOfAScript) {
  std::ifstream file(MORLA_SOURCE_DIR "/packaging/linux/capture-one/com.captureone.captureone16.service.in");
  std::string service{std::istreambuf_iterator<char>(file), {}};
  std::string const placeholder = "@CAPTUREONE_SIM@";
  auto const place = service.find(placeholder);
  ASSERT_NE(place, std::string::npos);
  service.replace(place, placeholder.size(), MORLA_SIMULATOR_PROGRAM);
  bus_.dataHome().write("dbus-1/services/com.captureone.captureone16.service", service);
  EXPECT_EQ(valueOf(send(countDocuments())), Value(std::int64_t{1}));
  EXPECT_EQ(get("events"), "1");
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, ServesItsDictionaryVerbatimWithoutCountingAnEvent) {
  auto simulator = start();
  auto const answer = client_.dictionary("com.captureone.captureone16");
  ASSERT_NE(answer.dictionary, nullptr) << answer.problem;
  EXPECT_EQ(answer.dictionary->properties.size(),
            applescript::parseDictionary(kDictionary).dictionary->properties.size());
  EXPECT_EQ(get("events"), "0");
  EXPECT_EQ(status({"quit"}), 0);
}

TEST_F(ProgramTest, EveryFaultReachesTheScript) {
  auto simulator = start();
  EXPECT_EQ(valueOf(send(getName())), Value("Capture One"));
  ASSERT_EQ(status({"set", "fault.reply", "a||b"}), 0);
  EXPECT_EQ(valueOf(send(getName())), Value("a||b"));
  EXPECT_EQ(valueOf(send(countDocuments())), Value(std::int64_t{1}));

  ASSERT_EQ(status({"set", "fault.refuse-at-event", "2"}), 0);
  EXPECT_EQ(errorOf(send(countDocuments())), 0);
  EXPECT_EQ(errorOf(send(countDocuments())), -1743);
  EXPECT_EQ(errorOf(send(countDocuments())), 0);

  ASSERT_EQ(status({"set", "fault.delay", "0.05"}), 0);
  auto const before = std::chrono::steady_clock::now();
  EXPECT_EQ(errorOf(send(countDocuments())), 0);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(50));

  ASSERT_EQ(status({"set", "fault.silent", "true"}), 0);
  auto event = countDocuments();
  event.timeout = std::chrono::milliseconds(50);
  EXPECT_EQ(errorOf(send(event)), -1712);
  ASSERT_EQ(status({"reset"}), 0);

  ASSERT_EQ(status({"set", "fault.quit-at-event", "2"}), 0);
  EXPECT_EQ(errorOf(send(countDocuments())), 0);
  EXPECT_EQ(errorOf(send(countDocuments())), -609);
  EXPECT_EQ(simulator.finish().status, 0);
}

TEST_F(ProgramTest, AWaitingEventHoldsUpNeitherTheControlsNorOtherEvents) {
  auto simulator = start();
  ASSERT_EQ(status({"set", "fault.delay", "3600"}), 0);
  auto waiting = std::async(std::launch::async, [this] { return errorOf(send(countDocuments())); });
  ASSERT_EQ(status({"wait", "events", "1", kPatience}), 0);
  ASSERT_EQ(status({"set", "fault.delay", "0"}), 0);
  EXPECT_EQ(valueOf(send(countDocuments())), Value(std::int64_t{1}));
  EXPECT_EQ(status({"quit"}), 0);
  EXPECT_EQ(waiting.get(), -609);
}

TEST_F(ProgramTest, QuitsOnTheEventAfterHavingAnsweredIt) {
  auto simulator = start();
  EXPECT_EQ(errorOf(send(AppleEvent{Code("aevt"), Code("quit"), {}, {}})), 0);
  EXPECT_EQ(simulator.finish().status, 0);
}

TEST_F(ProgramTest, TheAutomationKeyIsTheStoreOfPermissions) {
  auto simulator = start();
  auto const store = bus_.dataHome().path() / "privacy/permissions.json";
  EXPECT_EQ(get("automation"), "undecided");
  ASSERT_EQ(status({"set", "automation", "deny"}), 0);
  std::ifstream file(store);
  std::string const text{std::istreambuf_iterator<char>(file), {}};
  EXPECT_THAT(text, HasSubstr("app.morla.MORLA"));
  EXPECT_THAT(text, HasSubstr("deny"));
  // Somebody else decides: the waiting tool hears of it.
  Process waiting({MORLA_CONTROL_PROGRAM, "wait", "automation", "allow", kPatience});
  auto const replacement = bus_.dataHome().path() / "privacy/other";
  std::ofstream(replacement) << R"({"automation":{"app.morla.MORLA":{"com.captureone.captureone16":"allow"}}})";
  std::filesystem::rename(replacement, store);
  EXPECT_EQ(waiting.finish().status, 0);
  EXPECT_EQ(status({"quit"}), 0);
}

}  // namespace
}  // namespace morla::captureone
