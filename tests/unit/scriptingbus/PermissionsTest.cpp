#include "privacy/PermissionStore.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include "platform/linux/scripting/AutomationGate.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using applescript::ApplicationInformation;
using privacy::Permission;
using privacy::PermissionQuestion;
using privacy::PermissionStore;
using support::EnvironmentVariable;
using support::TemporaryFolder;
using Service = PermissionQuestion::Service;

constexpr char kClient[] = "app.morla.MORLA";
constexpr char kTarget[] = "com.example.toy";

PermissionQuestion const kAutomation{Service::automation, kClient, kTarget};

class Permissions : public ::testing::Test {
 protected:
  void write(std::string const& text) const { folder_.write("privacy/permissions.json", text); }
  [[nodiscard]] std::string text() const {
    std::ifstream file(store_.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  TemporaryFolder folder_;
  PermissionStore store_{folder_.path() / "privacy/permissions.json"};
};

TEST_F(Permissions, LieInTheUsersDataFolder) {
  EnvironmentVariable const home("HOME", "/home/someone");
  {
    EnvironmentVariable const dataHome("XDG_DATA_HOME", "/data");
    EXPECT_EQ(PermissionStore::ofUser().path(), "/data/privacy/permissions.json");
  }
  EnvironmentVariable const dataHome("XDG_DATA_HOME", "");
  EXPECT_EQ(PermissionStore::ofUser().path(), "/home/someone/.local/share/privacy/permissions.json");
}

TEST_F(Permissions, AreUndecidedUntilTheStoreSaysOtherwise) {
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided) << "there is no file";
  struct Row {
    char const* text;
    Permission permission;
  };
  Row const rows[] = {
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"allow"}}})", Permission::allow},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"deny"}}})", Permission::deny},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"undecided"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"perhaps"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":true}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.other":"allow"}}})", Permission::undecided},
      {R"({"automation":{"someone.else":{"com.example.toy":"allow"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":"allow"}})", Permission::undecided},
      {R"({"automation":["allow"]})", Permission::undecided},
      {R"(["allow"])", Permission::undecided},
      {R"({"automation":)", Permission::undecided},
      {"", Permission::undecided},
      {"\xff\xfe", Permission::undecided},
  };
  for (Row const& row : rows) {
    write(row.text);
    EXPECT_EQ(store_.get(kAutomation), row.permission) << row.text;
  }
}

TEST_F(Permissions, OfTheOtherServicesHaveNoTarget) {
  write(R"({"screenRecording":{"app.morla.MORLA":"allow"},"accessibility":{"app.morla.MORLA":"deny"}})");
  EXPECT_EQ(store_.get({Service::screenRecording, kClient, {}}), Permission::allow);
  EXPECT_EQ(store_.get({Service::accessibility, kClient, {}}), Permission::deny);
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Permissions, AreKeptBesideEachOther) {
  EXPECT_TRUE(store_.set(kAutomation, Permission::allow)) << "the folder is made";
  EXPECT_TRUE(store_.set({Service::automation, kClient, "com.example.other"}, Permission::deny));
  EXPECT_TRUE(store_.set({Service::screenRecording, kClient, {}}, Permission::deny));
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
  EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.other"}), Permission::deny);
  EXPECT_EQ(store_.get({Service::screenRecording, kClient, {}}), Permission::deny);
  EXPECT_TRUE(store_.set(kAutomation, Permission::undecided));
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Permissions, KeepWhatTheyDoNotKnow) {
  write(R"({"camera":{"x":1},"automation":{"app.morla.MORLA":{"com.example.other":"allow"}}})");
  EXPECT_TRUE(store_.set(kAutomation, Permission::deny));
  EXPECT_NE(text().find("\"camera\""), std::string::npos);
  EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.other"}), Permission::allow);
}

TEST_F(Permissions, AreLostByNobodyWhenSeveralWriteAtOnce) {
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 8; ++writer) {
    writers.emplace_back([this, writer] {
      for (int i = 0; i < 10; ++i) {
        std::string const target = "com.example.t" + std::to_string(writer * 10 + i);
        EXPECT_TRUE(PermissionStore(store_.path()).set({Service::automation, kClient, target}, Permission::allow));
      }
    });
  }
  for (auto& writer : writers) writer.join();
  for (int i = 0; i < 80; ++i) {
    EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.t" + std::to_string(i)}), Permission::allow) << i;
  }
}

TEST_F(Permissions, SayWhenTheyCannotBeWritten) {
  folder_.write("file", "");
  EXPECT_FALSE(PermissionStore(folder_.path() / "file/permissions.json").set(kAutomation, Permission::allow));
}

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
  ASSERT_TRUE(store_.set(kAutomation, Permission::allow));
  EXPECT_FALSE(gate.check({"Capture One", kTarget}));
  ASSERT_TRUE(store_.set(kAutomation, Permission::deny));
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
