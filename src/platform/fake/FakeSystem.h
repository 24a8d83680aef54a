#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/ScriptRunner.h"
#include "platform/UserDefaults.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

/// Answers scripts with what the test says; a script that comes before the test said anything ends the test.
class FakeScriptRunner : public platform::ScriptRunner {
 public:
  using Answer = std::function<platform::ScriptReply(std::string const& source)>;

  platform::ScriptReply execute(std::string const& source) override;

  void answersText(std::string text) {
    answer_ = [text = std::move(text)](std::string const&) { return platform::ScriptReply{text, std::nullopt}; };
  }
  void answersError(std::optional<std::int64_t> number) {
    answer_ = [number](std::string const&) {
      return platform::ScriptReply{std::nullopt, platform::ScriptError{number, "an error of the test"}};
    };
  }
  void answersNothing() {
    answer_ = [](std::string const&) { return platform::ScriptReply{}; };
  }
  void answers(Answer answer) { answer_ = std::move(answer); }

  std::vector<std::string> sources;

 private:
  Answer answer_;
};

class FakeUserDefaults : public platform::UserDefaults {
 public:
  std::optional<platform::DefaultsValue> value(std::string_view key) const override;

  std::map<std::string, platform::DefaultsValue, std::less<>> values;
  std::vector<platform::DefaultsEntry> writes;  ///< every one, in order

 private:
  void store(std::vector<platform::DefaultsEntry> const& entries) override;
};

class FakeFiles : public platform::Files {
 public:
  std::string homeFolder() const override { return "/Users/photographe"; }
  std::optional<std::vector<std::string>> visibleEntries(std::string const& folder) const override;

  /// Path, and the names of all that is in it.
  std::map<std::string, std::vector<std::string>> folders;
};

class FakeOwnBundle : public platform::OwnBundle {
 public:
  std::optional<std::string> identifier() const override { return bundleIdentifier; }
  std::string shortVersion() const override { return "1.0"; }

  std::optional<std::string> bundleIdentifier = "app.morla.MORLA";
};

class FakeApplication : public platform::Application {
 public:
  explicit FakeApplication(Journal& journal) : journal_(journal) {}

  void setActivationPolicy(platform::ActivationPolicy policy) override;
  /// Returns at once: the test turns the loop itself.
  int run() override;
  void terminate() override;
  void onActionRequest(std::function<platform::ActionOutcome(std::string_view)> handler) override;

  /// As the desktop would ask.
  platform::ActionOutcome request(std::string_view action) { return handler_(action); }
  bool isTerminated = false;

 private:
  Journal& journal_;
  std::function<platform::ActionOutcome(std::string_view)> handler_;
};

}  // namespace morla::fake
