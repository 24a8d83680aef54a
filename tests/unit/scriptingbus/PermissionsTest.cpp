#include "privacy/PermissionStore.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "platform/linux/scripting/AutomationGate.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using applescript::ApplicationInformation;
using privacy::Permission;
using privacy::PermissionQuestion;
using privacy::PermissionStore;
using support::TemporaryFolder;
using Service = PermissionQuestion::Service;

constexpr char kClient[] = "app.morla.MORLA";
constexpr char kTarget[] = "com.example.toy";

PermissionQuestion const kAutomation{Service::automation, kClient, kTarget};

class Permissions : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  PermissionStore store_{folder_.path() / "privacy/permissions.json"};
};

class ScriptedPrompt final : public ConsentPrompt {
 public:
  explicit ScriptedPrompt(Answer answer) : answer_(answer) {}
  Answer ask(ApplicationInformation const& target) override {
    asked_.push_back(target.name);
    return answer_;
  }
  std::vector<std::string> const& asked() const { return asked_; }

 private:
  Answer answer_;
  std::vector<std::string> asked_;
};

class Gate : public Permissions {
 protected:
  [[nodiscard]] std::int64_t check(ConsentPrompt* prompt) const {
    auto const error = AutomationGate(store_, kClient, prompt).check({"Toy", kTarget});
    return error ? error->number : 0;
  }
};

TEST_F(Gate, IsOpenedAndClosedByTheStoredDecision) {
  AutomationGate gate(store_, kClient, nullptr);
  ASSERT_EQ(store_.set(kAutomation, Permission::allow), std::nullopt);
  EXPECT_FALSE(gate.check({"Capture One", kTarget}));
  ASSERT_EQ(store_.set(kAutomation, Permission::deny), std::nullopt);
  auto const refusal = gate.check({"Capture One", kTarget});
  ASSERT_TRUE(refusal) << "a decision counts at once";
  EXPECT_EQ(refusal->number, -1743);
  EXPECT_EQ(refusal->message, "Not authorized to send Apple events to Capture One.");
}

TEST_F(Gate, StaysClosedWhileNobodyCanBeAsked) {
  EXPECT_EQ(check(nullptr), -1744);
}

TEST_F(Gate, AsksTheUserOnceAndRemembers) {
  ScriptedPrompt prompt(ConsentPrompt::Answer::allowed);
  EXPECT_EQ(check(&prompt), 0);
  EXPECT_EQ(check(&prompt), 0);
  EXPECT_EQ(prompt.asked(), std::vector<std::string>{"Toy"});
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
}

TEST_F(Gate, RemembersARefusal) {
  ScriptedPrompt prompt(ConsentPrompt::Answer::refused);
  EXPECT_EQ(check(&prompt), -1743);
  EXPECT_EQ(check(&prompt), -1743);
  EXPECT_EQ(prompt.asked().size(), 1U);
}

TEST_F(Gate, AsksAgainAfterNoAnswer) {
  ScriptedPrompt prompt(ConsentPrompt::Answer::none);
  EXPECT_EQ(check(&prompt), -1744);
  EXPECT_EQ(check(&prompt), -1744);
  EXPECT_EQ(prompt.asked().size(), 2U);
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Gate, AsksOnceForManyScripts) {
  ScriptedPrompt prompt(ConsentPrompt::Answer::allowed);
  AutomationGate gate(store_, kClient, &prompt);
  std::vector<std::thread> scripts;
  for (int i = 0; i < 8; ++i) {
    scripts.emplace_back([&gate] { EXPECT_FALSE(gate.check({"Toy", kTarget})); });
  }
  for (auto& script : scripts) script.join();
  EXPECT_EQ(prompt.asked().size(), 1U);
}

}  // namespace
}  // namespace morla::linux
