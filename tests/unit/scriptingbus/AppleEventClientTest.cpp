#include "scriptingbus/AppleEventClient.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <chrono>
#include <future>
#include <mutex>
#include <optional>
#include <vector>

#include "ServerThread.h"
#include "scriptingbus/ApplicationDirectory.h"
#include "support/PrivateBus.h"

namespace morla::scriptingbus {
namespace {

using namespace applescript;
using testing::servedAs;
using testing::ServerThread;
using namespace std::chrono_literals;

constexpr char kName[] = "com.example.toy";

AppleEvent eventNamed(Code id, Value direct = {}) {
  return {"Toy "_code, id, std::move(direct), {}};
}

std::int64_t errorNumber(EventReply const& reply) {
  auto const* const error = std::get_if<EventError>(&reply);
  return error == nullptr ? 0 : error->number;
}

std::string messageOf(EventReply const& reply) {
  auto const* const error = std::get_if<EventError>(&reply);
  return error == nullptr ? "no error" : error->message;
}

/// Answers 'echo' at once; keeps the answers to 'hold' until 'free' comes.
class HoldingHandler {
 public:
  ScriptingServer::Handler handler() {
    return [this](AppleEvent const& event, ScriptingServer::Answer answer) {
      if (event.eventId == "hold"_code) {
        held_.push_back(std::move(answer));
        holding_.set_value();
        holding_ = {};
        return;
      }
      if (event.eventId == "free"_code) {
        for (auto const& each : held_) each("freed");
        held_.clear();
      }
      answer(event.directObject);
    };
  }
  /// To be taken before the 'hold' is sent: ready once it has arrived.
  std::future<void> nextHold() { return holding_.get_future(); }

 private:
  std::vector<ScriptingServer::Answer> held_;
  std::promise<void> holding_;
};

using Launching = AppleEventClient::Launching;

class AppleEventClientTest : public ::testing::Test {
 protected:
  support::PrivateBus bus_;
  ConnectionPool pool_;
  AppleEventClient client_{pool_};
};

TEST_F(AppleEventClientTest, BringsTheReplyBack) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  auto const reply = client_.send(kName, eventNamed("echo"_code, List{"é", std::int64_t{1}}));
  ASSERT_TRUE(std::holds_alternative<Value>(reply)) << messageOf(reply);
  EXPECT_TRUE(std::get<Value>(reply) == Value(List{"é", std::int64_t{1}}));
}

TEST_F(AppleEventClientTest, WaitsForADelayedReplyWhileOtherEventsAreAnswered) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  auto arrived = holding.nextHold();
  auto waiting = std::async(std::launch::async, [&] { return client_.send(kName, eventNamed("hold"_code)); });
  arrived.wait();
  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code, "between"))) == Value("between"));
  EXPECT_EQ(waiting.wait_for(0s), std::future_status::timeout);
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("free"_code))), 0);
  EXPECT_TRUE(std::get<Value>(waiting.get()) == Value("freed"));
}

TEST_F(AppleEventClientTest, WaitsForNoReplyThatNobodyWants) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  auto arrived = holding.nextHold();
  auto event = eventNamed("hold"_code);
  event.wantsReply = false;
  EXPECT_EQ(errorNumber(client_.send(kName, event)), 0);
  arrived.wait();
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("free"_code))), 0);
}

TEST_F(AppleEventClientTest, GivesUpOnASilentApplicationAfterTheEventsTimeout) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  auto event = eventNamed("hold"_code);
  event.timeout = 30ms;
  auto const reply = client_.send(kName, event);
  EXPECT_EQ(errorNumber(reply), errors::kTimedOut);
  EXPECT_EQ(messageOf(reply), "AppleEvent timed out.");
}

TEST_F(AppleEventClientTest, TakesADroppedAnswerForSilence) {
  ServerThread const server(servedAs(kName), [](AppleEvent const&, ScriptingServer::Answer const&) {});
  auto event = eventNamed("echo"_code);
  event.timeout = 30ms;
  EXPECT_EQ(errorNumber(client_.send(kName, event)), errors::kTimedOut);
}

TEST_F(AppleEventClientTest, IgnoresAReplyThatComesTooLate) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  auto event = eventNamed("hold"_code);
  event.timeout = 30ms;
  EXPECT_EQ(errorNumber(client_.send(kName, event)), errors::kTimedOut);
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("free"_code))), 0);
  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code, "next"))) == Value("next"));
}

TEST_F(AppleEventClientTest, SaysThatNobodyRunsOrCanBeStarted) {
  auto const reply = client_.send(kName, eventNamed("echo"_code));
  EXPECT_EQ(errorNumber(reply), errors::kApplicationNotRunning);
  EXPECT_EQ(messageOf(reply), "Application isn’t running.");
  EXPECT_EQ(errorNumber(client_.send("no bus name", eventNamed("echo"_code))), errors::kApplicationNotRunning);
  EXPECT_EQ(errorNumber(client_.send("", eventNamed("echo"_code))), errors::kApplicationNotRunning);
}

TEST_F(AppleEventClientTest, SaysThatAnApplicationWhichCannotBeStartedDoesNotRun) {
  bus_.installService(kName, "/nowhere/at/all");
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code))), errors::kApplicationNotRunning);
  bus_.installService("com.example.other", "/bin/false");
  EXPECT_EQ(errorNumber(client_.send("com.example.other", eventNamed("echo"_code))), errors::kApplicationNotRunning);
}

TEST_F(AppleEventClientTest, SaysThatNobodyRunsWithoutABus) {
  bus_.kill();
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code))), errors::kApplicationNotRunning);
}

TEST_F(AppleEventClientTest, StartsAnApplicationOnlyToSendIt) {
  bus_.installService(kName, MORLA_TOY_PROGRAM);
  ApplicationDirectory directory(pool_);
  EXPECT_FALSE(directory.isRunning(kName));
  EXPECT_EQ(directory.nameOf(kName), std::nullopt);
  EXPECT_EQ(client_.dictionary(kName).dictionary, nullptr);
  EXPECT_FALSE(directory.isRunning(kName)) << "a question has started it";

  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code, "hello"))) == Value("hello"));
  EXPECT_TRUE(directory.isRunning(kName));
  EXPECT_EQ(directory.nameOf(kName), "Toy Library");
}

TEST_F(AppleEventClientTest, NoticesAtOnceThatTheOwnerVanishedWhileAReplyWasDue) {
  bus_.installService(kName, MORLA_TOY_PROGRAM);
  auto const start = std::chrono::steady_clock::now();
  auto const reply = client_.send(kName, eventNamed("die "_code));  // for which two minutes are allowed
  EXPECT_EQ(errorNumber(reply), errors::kConnectionInvalid);
  EXPECT_EQ(messageOf(reply), "Connection is invalid.");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
  EXPECT_FALSE(ApplicationDirectory(pool_).isRunning(kName));
}

TEST_F(AppleEventClientTest, SendsToTheOwnerThatIsKnownWithoutAskingAgain) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  ServerThread const other(servedAs("com.example.other"),
                           [](AppleEvent const&, ScriptingServer::Answer const& answer) { answer("the other"); });
  KnownOwners owners;
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)), 0);
  ASSERT_TRUE(owners.contains(kName));
  ASSERT_NE(client_.dictionary("com.example.other", owners).dictionary, nullptr);
  owners[kName] = owners["com.example.other"];
  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)) ==
              Value("the other"));
}

TEST_F(AppleEventClientTest, LooksForTheNextOwnerWhenTheKnownOneHasGone) {
  auto const answering = [](char const* text) {
    return [text](AppleEvent const&, ScriptingServer::Answer const& answer) { answer(text); };
  };
  KnownOwners owners;
  std::optional<ServerThread> server;
  auto const end = [&] {
    server.reset();
    // The bus may hear of the end of a connection after what comes on another one.
    while (ApplicationDirectory(pool_).isRunning(owners[kName])) {
    }
  };
  server.emplace(servedAs(kName), answering("first"));
  ASSERT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)), 0);
  end();
  EXPECT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)),
            errors::kApplicationNotRunning);
  server.emplace(servedAs(kName), answering("second"));
  ASSERT_EQ(errorNumber(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)), 0);
  end();
  server.emplace(servedAs(kName), answering("third"));
  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code), Launching::never, owners)) ==
              Value("third"));
  end();
  bus_.installService(kName, MORLA_TOY_PROGRAM);
  EXPECT_TRUE(std::get<Value>(client_.send(kName, eventNamed("echo"_code, "hi"), Launching::asNeeded, owners)) ==
              Value("hi"))
      << "it is started";
}

TEST_F(AppleEventClientTest, SaysThatABusNameWithoutTheInterfaceIsNotScriptable) {
  sd_bus* raw = nullptr;
  ASSERT_GE(sd_bus_open_user(&raw), 0);
  BusPointer const other(raw);
  ASSERT_GE(sd_bus_request_name(raw, kName, 0), 0);
  auto reply = std::async(std::launch::async, [&] { return client_.send(kName, eventNamed("echo"_code)); });
  while (reply.wait_for(0s) != std::future_status::ready) {
    sd_bus_wait(raw, 1000);
    while (sd_bus_process(raw, nullptr) > 0) {
    }
  }
  EXPECT_EQ(errorNumber(reply.get()), errors::kEventNotHandled);
}

TEST_F(AppleEventClientTest, RefusesAnEventThatCannotTravel) {
  ServerThread const server(servedAs(kName), [](AppleEvent const&, ScriptingServer::Answer const& answer) {
    answer("nothing should have come");
  });
  Value deep;
  for (int i = 0; i < 100; ++i) deep = List{deep};
  auto const reply = client_.send(kName, eventNamed("echo"_code, deep));
  EXPECT_EQ(errorNumber(reply), errors::kCannotCoerce);
  EXPECT_EQ(messageOf(reply), "The value is nested too deeply to be sent.");
}

TEST_F(AppleEventClientTest, AnswersManyThreadsAtOnce) {
  HoldingHandler holding;
  ServerThread const server(servedAs(kName), holding.handler());
  std::vector<std::future<bool>> threads;
  for (std::int64_t thread = 0; thread < 16; ++thread) {
    threads.push_back(std::async(std::launch::async, [this, thread] {
      bool isRight = true;
      for (std::int64_t i = 0; i < 25; ++i) {
        Value const value = thread * 1000 + i;
        auto const reply = client_.send(kName, eventNamed("echo"_code, value));
        isRight = isRight && std::holds_alternative<Value>(reply) && std::get<Value>(reply) == value;
      }
      return isRight;
    }));
  }
  for (auto& thread : threads) EXPECT_TRUE(thread.get());
}

TEST_F(AppleEventClientTest, AsksForADictionaryOnceInTheLifeOfAnApplication) {
  auto const ignore = [](AppleEvent const&, ScriptingServer::Answer const&) {};
  std::optional<ServerThread> server;
  server.emplace(ServedApplication{kName, "Toy", "1", "class\tbook\tBook\n"}, ignore);
  auto const first = client_.dictionary(kName);
  ASSERT_NE(first.dictionary, nullptr) << first.problem;
  ASSERT_EQ(first.dictionary->classes.size(), 1U);
  EXPECT_EQ(first.dictionary->classes[0].name, "book");
  EXPECT_EQ(client_.dictionary(kName).dictionary, first.dictionary);

  server.reset();
  EXPECT_EQ(client_.dictionary(kName).dictionary, nullptr);
  server.emplace(ServedApplication{kName, "Toy", "2", "class\tshelf\tShlf\n"}, ignore);
  auto const second = client_.dictionary(kName);
  ASSERT_NE(second.dictionary, nullptr) << second.problem;
  EXPECT_EQ(second.dictionary->classes[0].name, "shelf");
}

TEST_F(AppleEventClientTest, SaysWhatIsWrongWithADictionary) {
  ServerThread const server({kName, "Toy", "1", "nonsense\n"},
                            [](AppleEvent const&, ScriptingServer::Answer const&) {});
  auto const answer = client_.dictionary(kName);
  EXPECT_EQ(answer.dictionary, nullptr);
  EXPECT_TRUE(answer.problem.starts_with("The dictionary of com.example.toy: line 1")) << answer.problem;
}

}  // namespace
}  // namespace morla::scriptingbus
