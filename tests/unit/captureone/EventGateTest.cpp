#include "captureone/scripting/EventGate.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace morla::captureone {
namespace {

using applescript::AppleEvent;
using applescript::EventError;
using applescript::EventReply;
using applescript::Value;
using Seconds = std::chrono::duration<double>;

/// The value that was replied; a text that no test expects when there is no reply, or an error.
Value valueOf(std::optional<EventReply> const& reply) {
  auto const* value = reply ? std::get_if<Value>(&*reply) : nullptr;
  return value == nullptr ? Value(reply ? "(error)" : "(no reply)") : *value;
}

class EventGateTest : public ::testing::Test {
 protected:
  std::optional<EventReply>& send() {
    auto place = std::make_shared<std::optional<EventReply>>();
    replies_.push_back(place);
    gate_.handle(AppleEvent{}, [place](EventReply reply) { *place = std::move(reply); });
    return *place;
  }

  Model model_;
  EventReply answer_ = Value("real");
  int handled_ = 0;
  int quits_ = 0;
  std::vector<std::pair<Seconds, std::function<void()>>> waiting_;
  std::vector<std::shared_ptr<std::optional<EventReply>>> replies_;
  EventGate gate_{model_,
                  [this](AppleEvent const&) {
                    ++handled_;
                    return answer_;
                  },
                  {[this](Seconds delay, std::function<void()> then) { waiting_.emplace_back(delay, std::move(then)); },
                   [this] { ++quits_; }}};
};

TEST_F(EventGateTest, AnswersAtOnceWhenNothingShallGoWrong) {
  EXPECT_EQ(valueOf(send()), Value("real"));
  EXPECT_TRUE(waiting_.empty());
  EXPECT_EQ(model_.faults().events(), 1);
}

TEST_F(EventGateTest, ADelayedEventIsReadFromTheModelOnlyWhenItsTimeHasCome) {
  model_.faults().setDelay(Seconds(0.5));
  auto& reply = send();
  EXPECT_FALSE(reply.has_value());
  EXPECT_EQ(handled_, 0);
  ASSERT_EQ(waiting_.size(), 1u);
  EXPECT_EQ(waiting_[0].first, Seconds(0.5));
  answer_ = Value("later");
  waiting_[0].second();
  EXPECT_EQ(valueOf(reply), Value("later"));
}

TEST_F(EventGateTest, ANewDelayLeavesThoseAloneThatWaitAlready) {
  model_.faults().setDelay(Seconds(9));
  send();
  model_.faults().setDelay(Seconds(0));
  EXPECT_TRUE(send().has_value());
  EXPECT_EQ(waiting_.size(), 1u);
}

TEST_F(EventGateTest, ASilentApplicationCountsEventsAndNeverAnswersThem) {
  model_.faults().setSilence(Silence::on);
  auto& reply = send();
  model_.faults().setSilence(Silence::off);
  EXPECT_FALSE(reply.has_value());
  EXPECT_EQ(handled_, 0);
  EXPECT_EQ(model_.faults().events(), 1);
}

TEST_F(EventGateTest, RefusesTheEventThatWasNamedWithoutTouchingTheModel) {
  model_.faults().setRefuseAtEvent(2);
  EXPECT_TRUE(std::holds_alternative<Value>(*send()));
  auto const* error = std::get_if<EventError>(&*send());
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->number, -1743);
  EXPECT_EQ(handled_, 1);
  EXPECT_TRUE(std::holds_alternative<Value>(*send()));
}

TEST_F(EventGateTest, QuitsAtTheEventThatWasNamedAndAnswersNobodyAnyMore) {
  model_.faults().setQuitAtEvent(2);
  EXPECT_TRUE(send().has_value());
  EXPECT_EQ(quits_, 0);
  EXPECT_FALSE(send().has_value());
  EXPECT_EQ(quits_, 1);
  EXPECT_FALSE(send().has_value());
  EXPECT_EQ(quits_, 1);
  EXPECT_EQ(handled_, 1);
}

TEST_F(EventGateTest, PutsTheRawTextInThePlaceOfTextRepliesOnly) {
  struct Row {
    char const* label;
    Value real;
    bool isReplaced;
  };
  Row const rows[] = {
      {"text", Value("real"), true},
      {"empty text", Value(""), true},
      {"integer", Value(std::int64_t{1}), false},
      {"boolean", Value(true), false},
      {"missing value", Value::missing(), false},
      {"list of text", Value(applescript::List{Value("a")}), false},
      {"no value", Value(), false},
  };
  model_.faults().setReply("raw\xff");
  for (auto const& row : rows) {
    answer_ = row.real;
    EXPECT_EQ(valueOf(send()), row.isReplaced ? Value("raw\xff") : row.real) << row.label;
  }
  answer_ = EventError{-1728, "no", {}};
  EXPECT_TRUE(std::holds_alternative<EventError>(*send()));
}

TEST_F(EventGateTest, PutsWhatIsNoTextInThePlaceOfTextRepliesOnly) {
  struct Row {
    char const* label;
    StandIn standIn;
    Value value;
  };
  Row const rows[] = {
      {"integer", StandIn::integer, Value(std::int64_t{400})},
      {"missing value", StandIn::missing, Value::missing()},
      {"no value", StandIn::nothing, Value()},
  };
  model_.faults().setReply("raw");
  for (auto const& row : rows) {
    model_.faults().setStandIn(row.standIn);
    answer_ = Value("real");
    EXPECT_EQ(valueOf(send()), row.value) << row.label;
    answer_ = Value(true);
    EXPECT_EQ(valueOf(send()), Value(true)) << row.label;
  }
  model_.faults().reset();
  answer_ = Value("real");
  EXPECT_EQ(valueOf(send()), Value("real"));
}

}  // namespace
}  // namespace morla::captureone
