#include "scriptingbus/ScriptingServer.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <systemd/sd-bus.h>

#include <cstdint>
#include <cstdlib>
#include <future>
#include <optional>
#include <thread>

#include "ServerThread.h"
#include "scriptingbus/BusHandles.h"
#include "scriptingbus/EventCodec.h"
#include "scriptingbus/Protocol.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"

namespace morla::scriptingbus {
namespace {

using namespace applescript;
using testing::servedAs;
using testing::ServerThread;

constexpr char kName[] = "com.example.server";
/// In microseconds; far beyond what any of these calls takes under a sanitizer on a busy machine.
constexpr std::uint64_t kCallTimeout = 110'000'000;

void echo(AppleEvent const& event, ScriptingServer::Answer const& answer) {
  answer(event.directObject);
}

/// A caller that says exactly what a test wants, be it wrong.
class RawCaller {
 public:
  RawCaller() {
    sd_bus* raw = nullptr;
    EXPECT_GE(sd_bus_open_user(&raw), 0);
    bus_.reset(raw);
  }

  [[nodiscard]] MessagePointer newSend() const {
    sd_bus_message* raw = nullptr;
    EXPECT_GE(sd_bus_message_new_method_call(bus_.get(), &raw, kName, kScriptingPath, kScriptingInterface, "Send"), 0);
    return MessagePointer(raw);
  }

  /// Null when the bus answers with an error.
  [[nodiscard]] MessagePointer call(sd_bus_message* message) const {
    sd_bus_message* reply = nullptr;
    sd_bus_call(bus_.get(), message, kCallTimeout, nullptr, &reply);
    return MessagePointer(reply);
  }

  [[nodiscard]] EventReply send(AppleEvent const& event) const {
    auto const message = newSend();
    EXPECT_FALSE(writeEvent(message.get(), event));
    auto const reply = call(message.get());
    return reply == nullptr ? EventError{0, "error of the bus", {}} : readReply(reply.get());
  }

  [[nodiscard]] std::string property(char const* name) const {
    char* text = nullptr;
    EXPECT_GE(sd_bus_get_property_string(bus_.get(), kName, kScriptingPath, kScriptingInterface, name, nullptr, &text),
              0);
    std::string copy = text == nullptr ? "" : text;
    std::free(text);
    return copy;
  }

  [[nodiscard]] sd_bus* bus() const { return bus_.get(); }

 private:
  BusPointer bus_;
};

TEST(ScriptingServer, SaysThatThereIsNoBus) {
  support::EnvironmentVariable const address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/at/all");
  auto const opened = ScriptingServer::open(servedAs(kName), echo);
  EXPECT_EQ(opened.server, nullptr);
  EXPECT_EQ(opened.failure, "There is no session bus: No such file or directory.");
}

TEST(ScriptingServer, SaysThatTheNameIsTaken) {
  support::PrivateBus const bus;
  ServerThread const first(servedAs(kName), echo);
  auto const second = ScriptingServer::open(servedAs(kName), echo);
  EXPECT_EQ(second.server, nullptr);
  EXPECT_EQ(second.failure, "The name com.example.server is taken on the session bus: the application runs already.");
}

TEST(ScriptingServer, SaysThatTheNameIsNone) {
  support::PrivateBus const bus;
  auto const opened = ScriptingServer::open(servedAs("no bus name"), echo);
  EXPECT_EQ(opened.server, nullptr);
  EXPECT_EQ(opened.failure, "The name no bus name cannot be taken on the session bus: Invalid argument.");
}

TEST(ScriptingServer, TellsNameVersionAndDictionary) {
  support::PrivateBus const bus;
  std::string const dictionary = "# é\nclass\tdocument\tdocu\n";
  ServerThread const server({kName, "Toy é", "16.5", dictionary}, echo);
  RawCaller const caller;
  EXPECT_EQ(caller.property("Name"), "Toy é");
  EXPECT_EQ(caller.property("Version"), "16.5");
  sd_bus_message* raw = nullptr;
  ASSERT_GE(sd_bus_call_method(caller.bus(), kName, kScriptingPath, kScriptingInterface, "Dictionary", nullptr, &raw,
                               nullptr),
            0);
  MessagePointer const reply(raw);
  char const* text = nullptr;
  ASSERT_GT(sd_bus_message_read(raw, "s", &text), 0);
  EXPECT_EQ(text, dictionary);
}

TEST(ScriptingServer, HandsTheWholeEventToItsHandler) {
  support::PrivateBus const bus;
  std::promise<AppleEvent> received;
  ServerThread const server(servedAs(kName), [&](AppleEvent const& event, ScriptingServer::Answer const& answer) {
    received.set_value(event);
    answer(Value());
  });
  AppleEvent event{"core"_code, "setd"_code, "direct", {{"data"_code, std::int64_t{5}}, {"kocl"_code, true}}};
  event.timeout = std::chrono::milliseconds(4321);
  event.considerations.bits = Considerations::kIgnoreDiacriticals;
  EXPECT_TRUE(std::get<Value>(RawCaller().send(event)).isNull());

  auto const arrived = received.get_future().get();
  EXPECT_EQ(arrived.eventClass, event.eventClass);
  EXPECT_EQ(arrived.eventId, event.eventId);
  EXPECT_TRUE(arrived.directObject == event.directObject);
  ASSERT_EQ(arrived.parameters.size(), 2U);
  EXPECT_EQ(arrived.parameters[0].first, "data"_code);
  EXPECT_TRUE(arrived.parameters[0].second == Value(std::int64_t{5}));
  EXPECT_EQ(arrived.parameters[1].first, "kocl"_code);
  EXPECT_EQ(arrived.timeout, event.timeout);
  EXPECT_EQ(arrived.considerations, event.considerations);
}

TEST(ScriptingServer, CarriesAnErrorWithItsOffender) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), [](AppleEvent const&, ScriptingServer::Answer const& answer) {
    answer(EventError{-1728, "Can’t get it.", "it"});
  });
  auto const error = std::get<EventError>(RawCaller().send({"core"_code, "getd"_code, {}}));
  EXPECT_EQ(error.number, -1728);
  EXPECT_EQ(error.message, "Can’t get it.");
  EXPECT_TRUE(error.offender == Value("it"));
}

TEST(ScriptingServer, TellsAnErrorInsteadOfAReplyThatCannotTravel) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), [](AppleEvent const&, ScriptingServer::Answer const& answer) {
    Value value;
    for (int i = 0; i < 100; ++i) value = List{value};
    answer(value);
  });
  auto const error = std::get<EventError>(RawCaller().send({"core"_code, "getd"_code, {}}));
  EXPECT_EQ(error.number, errors::kCannotCoerce);
  EXPECT_EQ(error.message, "The value is nested too deeply to be sent.");
}

TEST(ScriptingServer, CarriesTheDeepestValueThroughARealBus) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), echo);
  Value deep;  // null takes a variant and a structure, each list a variant and an array
  for (std::size_t i = 0; i < (kMaximumDepth - 2) / 2; ++i) deep = List{deep};
  auto const reply = RawCaller().send({"core"_code, "echo"_code, deep});
  ASSERT_TRUE(std::holds_alternative<Value>(reply)) << std::get<EventError>(reply).message;
  EXPECT_TRUE(std::get<Value>(reply) == deep);
}

TEST(ScriptingServer, CarriesMegabytesThroughARealBus) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), echo);
  std::string const text(std::size_t{8} * 1024 * 1024, 'x');
  auto const reply = RawCaller().send({"core"_code, "echo"_code, text});
  ASSERT_TRUE(std::holds_alternative<Value>(reply)) << std::get<EventError>(reply).message;
  EXPECT_TRUE(std::get<Value>(reply) == Value(text));
}

TEST(ScriptingServer, CountsOnlyTheFirstAnswer) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), [](AppleEvent const&, ScriptingServer::Answer const& answer) {
    answer("first");
    answer("second");
  });
  RawCaller const caller;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(std::get<Value>(caller.send({"core"_code, "getd"_code, {}})) == Value("first"));
  }
}

TEST(ScriptingServer, RefusesEventsThatAreNonsense) {
  support::PrivateBus const bus;
  ServerThread const server(servedAs(kName), echo);
  RawCaller const caller;
  struct Row {
    char const* name;
    char const* eventClass;
    char const* parameterKey;
    int null;
    char const* problem;
  };
  Row const rows[] = {
      {"a class that is no code", "core!", "data", 0, "\"core!\" is no four-character code."},
      {"a parameter that has no code", "core", "", 0, "\"\" is no four-character code."},
      {"a null that is none", "core", "data", 3, "A null value holds 3."},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    auto const call = caller.newSend();
    ASSERT_GE(sd_bus_message_append(call.get(), "ssva{sv}uu", row.eventClass, "getd", "(y)", row.null, 1,
                                    row.parameterKey, "b", 1, 1000U, 0U),
              0);
    auto const reply = caller.call(call.get());
    ASSERT_NE(reply, nullptr);
    auto const error = std::get<EventError>(readReply(reply.get()));
    EXPECT_EQ(error.number, errors::kCannotCoerce);
    EXPECT_EQ(error.message, row.problem);
  }
  auto const call = caller.newSend();
  ASSERT_GE(sd_bus_message_append(call.get(), "s", "what is this"), 0);
  EXPECT_EQ(caller.call(call.get()), nullptr) << "other arguments are an error of the bus";
  EXPECT_TRUE(std::get<Value>(caller.send({"core"_code, "echo"_code, "still there"})) == Value("still there"));
}

TEST(ScriptingServer, LetsAnAnswerOutliveIt) {
  support::PrivateBus const bus;
  std::promise<ScriptingServer::Answer> held;
  std::optional<ServerThread> server;
  server.emplace(servedAs(kName),
                 [&](AppleEvent const&, ScriptingServer::Answer const& answer) { held.set_value(answer); });
  RawCaller const caller;
  auto const call = caller.newSend();
  ASSERT_FALSE(writeEvent(call.get(), {"core"_code, "getd"_code, {}}));
  ASSERT_GE(sd_bus_send(caller.bus(), call.get(), nullptr), 0);
  ASSERT_GE(sd_bus_flush(caller.bus()), 0);
  auto const answer = held.get_future().get();
  server.reset();
  answer("too late");
}

TEST(ScriptingServer, NoticesThatTheBusHasGone) {
  support::PrivateBus bus;
  auto const opened = ScriptingServer::open(servedAs(kName), echo);
  ASSERT_NE(opened.server, nullptr) << opened.failure;
  EXPECT_TRUE(opened.server->process());
  bus.kill();
  pollfd watched{opened.server->fileDescriptor(), POLLIN, 0};
  ASSERT_EQ(::poll(&watched, 1, -1), 1);
  EXPECT_FALSE(opened.server->process());
  EXPECT_FALSE(opened.server->process());
}

}  // namespace
}  // namespace morla::scriptingbus
