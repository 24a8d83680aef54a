#include "platform/linux/scripting/BusScriptRunner.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <vector>

#include "InstalledToy.h"
#include "ServerThread.h"
#include "platform/fake/FakeMainLoop.h"
#include "platform/linux/system/ThreadedBackgroundWork.h"
#include "toy/ToyLibrary.h"

namespace morla::linux {
namespace {

class BusScriptRunnerTest : public ::testing::Test {
 protected:
  /// The script's text, or its error as "-600: Application isn’t running.", or "nothing".
  std::string result(std::string const& source) {
    auto const reply = runner_.execute(source);
    if (reply.error) return std::to_string(reply.error->number.value_or(0)) + ": " + reply.error->message;
    return reply.text.value_or("nothing");
  }
  std::string resultInToy(std::string const& statements) {
    return result("tell application \"Toy Library\"\n" + statements + "\nend tell");
  }
  [[nodiscard]] bool toyRuns() { return services_.directory.isRunning("com.example.toy"); }

  scriptingbus::testing::InstalledToy toy_;
  ScriptingServices services_{Bundles::installed(), privacy::PermissionStore::ofUser(), "app.morla.MORLA", nullptr};
  BusScriptRunner runner_{services_};
};

TEST_F(BusScriptRunnerTest, GivesResultsAsText) {
  EXPECT_EQ(result("\"a\" & \"b\""), "ab");
  EXPECT_EQ(result("1 + 2"), "3");
  EXPECT_EQ(result("missing value"), "msng");
  EXPECT_EQ(result("{1, 2}"), "nothing");
  EXPECT_EQ(result(""), "nothing");
}

TEST_F(BusScriptRunnerTest, GivesErrorsWithTheirNumbers) {
  EXPECT_EQ(result("error \"oops\" number 77"), "77: oops");
  auto const reply = runner_.execute("set set");
  ASSERT_TRUE(reply.error);
  EXPECT_FALSE(reply.text);
  EXPECT_EQ(reply.error->number, -2741);
}

TEST_F(BusScriptRunnerTest, SpeaksWithAnApplicationThroughItsOwnDictionary) {
  EXPECT_EQ(resultInToy("name of book 2"), "Shadow");
  EXPECT_EQ(resultInToy("page count of last book"), "77");
  EXPECT_EQ(resultInToy("shelf mark of book \"Light\""), "L1");
  EXPECT_EQ(resultInToy("count of books"), "3");
  EXPECT_EQ(resultInToy("binding of book 2 is hard cover"), "true");
  EXPECT_EQ(resultInToy("set opening hours to \"never\"\nopening hours"), "never");
  EXPECT_EQ(resultInToy("set binding of book 2 to soft cover\nbinding of book 2"), "Soft");
  EXPECT_EQ(resultInToy("lend book \"Colour, a history\" to \"Anna\""), "Colour, a history goes to Anna");
  EXPECT_EQ(resultInToy("set b to item 2 of (get every book)\nname of b"), "Shadow");
}

TEST_F(BusScriptRunnerTest, TellsTheErrorsOfAnApplicationAsItsOwn) {
  EXPECT_EQ(resultInToy("name of book 9"), "-1728: Toy Library got an error: Can’t get it.");
  EXPECT_EQ(resultInToy("set page count of book 1 to 5"), "-10003: Toy Library got an error: Can’t set it.");
}

TEST_F(BusScriptRunnerTest, StartsAnApplicationOnlyByACommand) {
  EXPECT_EQ(result("application \"Toy Library\" is running"), "false");
  EXPECT_EQ(result("tell application \"Toy Library\"\nend tell"), "nothing");
  EXPECT_EQ(resultInToy("1 + 1"), "2");
  EXPECT_FALSE(toyRuns());
  EXPECT_EQ(resultInToy("count of books"), "3");
  EXPECT_TRUE(toyRuns());
  EXPECT_EQ(result("application \"toy library\" is running"), "true");
  EXPECT_EQ(result("application id \"com.example.toy\" is running"), "true");
  EXPECT_EQ(result("application \"Nobody\" is running"), "false");
}

TEST_F(BusScriptRunnerTest, DoesNotFindAnApplicationThatIsNotThere) {
  EXPECT_EQ(result("tell application \"Nobody\" to activate").substr(0, 5), "-1728");
}

TEST_F(BusScriptRunnerTest, NoticesAtOnceThatAnApplicationEndedInMidEvent) {
  EXPECT_EQ(resultInToy("slam the door"), "-609: Toy Library got an error: Connection is invalid.");
  EXPECT_FALSE(toyRuns());
  EXPECT_EQ(resultInToy("count of books"), "3") << "and can be started again";
}

TEST_F(BusScriptRunnerTest, DoesNotStartAgainWhatEndedInTheMiddleOfATell) {
  EXPECT_EQ(resultInToy("count of books\ntry\nslam the door\nend try\ncount of books"),
            "-600: Toy Library got an error: Application isn’t running.");
  EXPECT_FALSE(toyRuns());
  EXPECT_EQ(result("tell application \"Toy Library\"\ntry\nslam the door\nend try\nend tell\n"
                   "tell application \"Toy Library\" to count of books"),
            "3")
      << "a new tell may start it";
}

TEST_F(BusScriptRunnerTest, GivesUpOnASilentApplicationWhenTheScriptSaysSo) {
  EXPECT_EQ(resultInToy("with timeout of 1 second\nsay nothing\nend timeout"),
            "-1712: Toy Library got an error: AppleEvent timed out.");
}

TEST_F(BusScriptRunnerTest, StopsAtAPermissionThatTheUserRefused) {
  toy_.decide("deny");
  EXPECT_EQ(resultInToy("count of books"), "-1743: Not authorized to send Apple events to Toy Library.");
  EXPECT_EQ(result("application \"Toy Library\" is running"), "false") << "which needs no permission";
  toy_.decide("undecided");
  EXPECT_EQ(resultInToy("count of books").substr(0, 5), "-1744");
  EXPECT_FALSE(toyRuns());
}

TEST_F(BusScriptRunnerTest, KeepsTheTextItemDelimitersFromOneScriptToTheNext) {
  EXPECT_EQ(result("{1, 2} as text"), "12");
  EXPECT_EQ(result("set AppleScript's text item delimiters to \"|\""), "|");
  EXPECT_EQ(result("{1, 2} as text"), "1|2");
  EXPECT_EQ(result("set AppleScript's text item delimiters to \"-\"\nerror number 5").substr(0, 2), "5:");
  EXPECT_EQ(result("{1, 2} as text"), "1-2") << "also after an error";
}

/// The toy library on a thread, which answers "say nothing" only when it is told to slam the door.
class PatientToy {
 public:
  explicit PatientToy(std::size_t expected) : expected_(expected) {}

  void waitUntilAllAreSilent() { allCame_.get_future().wait(); }

 private:
  void handle(applescript::AppleEvent const& event, scriptingbus::ScriptingServer::Answer const& answer) {
    if (event.eventId == applescript::Code("hush")) {
      held_.push_back(answer);
      if (held_.size() == expected_) allCame_.set_value();
    } else if (event.eventId == applescript::Code("die ")) {
      for (auto const& each : held_) each("at last");
      answer(applescript::Value());
    } else {
      answer(library_.handle(event));
    }
  }

  std::size_t expected_;
  std::promise<void> allCame_;
  std::vector<scriptingbus::ScriptingServer::Answer> held_;
  scriptingbus::testing::ToyLibrary library_;
  scriptingbus::testing::ServerThread server_{
      {"com.example.toy", "Toy Library", "1.0", scriptingbus::testing::ToyLibrary::dictionary()},
      [this](auto const& event, auto const& answer) { handle(event, answer); }};
};

TEST_F(BusScriptRunnerTest, AFifthScriptAnswersBesideFourThatWait) {
  PatientToy toy(4);
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop);
  auto const start = [&](std::string const& statements) {
    auto result = std::make_shared<std::promise<std::string>>();
    background.run(QualityOfService::userInitiated,
                   [this, statements, result] { result->set_value(resultInToy(statements)); });
    return result->get_future();
  };
  std::vector<std::future<std::string>> silent;
  for (int i = 0; i < 4; ++i) silent.push_back(start("say nothing"));
  toy.waitUntilAllAreSilent();
  EXPECT_EQ(start("name of book 1").get(), "Light");
  EXPECT_EQ(start("slam the door").get(), "nothing");
  for (auto& each : silent) EXPECT_EQ(each.get(), "at last");
}

TEST_F(BusScriptRunnerTest, RunsShellCommands) {
  EXPECT_EQ(result("do shell script \"echo one; echo two\""), "one\rtwo");
  EXPECT_EQ(result("do shell script \"echo bad >&2; exit 3\""), "3: bad");
}

}  // namespace
}  // namespace morla::linux
