#include "platform/linux/scripting/AutomationGate.h"

#include <gtest/gtest.h>

#include <future>
#include <semaphore>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using applescript::ApplicationInformation;
using privacy::Permission;
using privacy::PermissionQuestion;

PermissionQuestion const kQuestion{PermissionQuestion::Service::automation, "app.morla.MORLA", "com.example.toy"};

class ScriptedPrompt final : public ConsentPrompt {
 public:
  explicit ScriptedPrompt(Permission answer) : answer_(answer) {}
  Permission ask(PermissionQuestion const& question, ApplicationInformation const& target) override {
    EXPECT_EQ(question, kQuestion);
    asked_.push_back(target.name);
    return answer_;
  }
  [[nodiscard]] std::vector<std::string> const& asked() const { return asked_; }

 private:
  Permission answer_;
  std::vector<std::string> asked_;
};

class Gate : public ::testing::Test {
 protected:
  void decide(Permission permission) const { ASSERT_EQ(store_.set(kQuestion, permission), std::nullopt); }
  [[nodiscard]] std::int64_t check(ConsentPrompt* prompt) const {
    auto const error = AutomationGate(store_, kQuestion.client, prompt).check({"Toy", kQuestion.target});
    return error ? error->number : 0;
  }

  support::TemporaryFolder folder_;
  privacy::PermissionStore store_{folder_ / "privacy/permissions.json"};
};

TEST_F(Gate, IsOpenedAndClosedByTheStoredDecision) {
  AutomationGate const gate(store_, kQuestion.client, nullptr);
  decide(Permission::allow);
  EXPECT_FALSE(gate.check({"Capture One", kQuestion.target}));
  decide(Permission::deny);
  auto const refusal = gate.check({"Capture One", kQuestion.target});
  ASSERT_TRUE(refusal) << "a decision counts at once";
  EXPECT_EQ(refusal->number, -1743);
  EXPECT_EQ(refusal->message, "Not authorized to send Apple events to Capture One.");
}

TEST_F(Gate, StaysClosedWhileNobodyCanBeAsked) {
  EXPECT_EQ(check(nullptr), -1744);
}

TEST_F(Gate, AsksNobodyAboutWhatIsDecided) {
  ScriptedPrompt prompt(Permission::deny);
  decide(Permission::allow);
  EXPECT_EQ(check(&prompt), 0);
  decide(Permission::deny);
  EXPECT_EQ(check(&prompt), -1743);
  EXPECT_TRUE(prompt.asked().empty());
}

TEST_F(Gate, DoesAsTheUserAnswers) {
  struct Row {
    Permission answer;
    std::int64_t error;
  };
  for (auto const& [answer, error] :
       {Row{Permission::allow, 0}, Row{Permission::deny, -1743}, Row{Permission::undecided, -1744}}) {
    ScriptedPrompt prompt(answer);
    EXPECT_EQ(check(&prompt), error);
    EXPECT_EQ(prompt.asked(), std::vector<std::string>{"Toy"});
  }
}

/// The user takes the time until `answer`.
class SlowPrompt final : public ConsentPrompt {
 public:
  Permission ask(PermissionQuestion const&, ApplicationInformation const&) override {
    auto const answered = answered_;
    waiting_.release();
    return answered.get();
  }
  void waitForScripts(int count) {
    for (int i = 0; i < count; ++i) waiting_.acquire();
  }
  void answer(Permission permission) { answer_.set_value(permission); }

 private:
  std::counting_semaphore<> waiting_{0};
  std::promise<Permission> answer_;
  std::shared_future<Permission> answered_ = answer_.get_future().share();
};

TEST_F(Gate, HoldsNoScriptUpThatHasItsPermissionWhileOthersWait) {
  SlowPrompt prompt;
  AutomationGate const gate(store_, kQuestion.client, &prompt);
  ASSERT_EQ(store_.set({kQuestion.service, kQuestion.client, "com.example.allowed"}, Permission::allow), std::nullopt);
  std::vector<std::future<bool>> waiting;
  for (int i = 0; i < 4; ++i) {
    waiting.push_back(std::async(std::launch::async, [&] { return !gate.check({"Toy", kQuestion.target}); }));
  }
  prompt.waitForScripts(4);
  EXPECT_FALSE(gate.check({"Allowed", "com.example.allowed"}));
  prompt.answer(Permission::allow);
  for (auto& script : waiting) EXPECT_TRUE(script.get());
}

}  // namespace
}  // namespace morla::linux
