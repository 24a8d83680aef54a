#include "platform/linux/scripting/ConsentDesk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <future>
#include <mutex>
#include <string>
#include <vector>

#include "platform/fake/FakeMainLoop.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using namespace std::chrono_literals;
using privacy::Permission;
using privacy::PermissionQuestion;
using ::testing::ElementsAre;
using Answer = ConsentDesk::Answer;

PermissionQuestion questionAbout(std::string const& target) {
  return {PermissionQuestion::Service::automation, "app.morla.MORLA", target};
}

/// Virtual time, and a way to know that another thread has posted.
class WatchedLoop final : public fake::FakeMainLoop {
 public:
  void post(std::function<void()> work) override {
    FakeMainLoop::post(std::move(work));
    std::lock_guard const lock(guard_);
    ++posts_;
    hasPosted_.notify_all();
  }
  void waitForPosts(int count) {
    std::unique_lock lock(guard_);
    hasPosted_.wait(lock, [&] { return posts_ >= count; });
  }

 private:
  std::mutex guard_;
  std::condition_variable hasPosted_;
  int posts_ = 0;
};

class Desk : public ::testing::Test {
 protected:
  using Script = std::future<Permission>;

  /// A script on a thread of its own, whose question has arrived when this returns.
  [[nodiscard]] Script ask(std::string const& target = "com.example.toy") {
    auto script =
        std::async(std::launch::async, [this, target] { return desk_->ask(questionAbout(target), {target, target}); });
    loop_.waitForPosts(++asked_);
    loop_.runReady();
    return script;
  }
  [[nodiscard]] static bool isWaiting(Script const& script) { return script.wait_for(0s) != std::future_status::ready; }
  void answer(Answer answer) {
    ASSERT_TRUE(answered_) << "nothing is shown";
    answered_(answer);
  }
  /// As another program does.
  void decide(std::string const& target, Permission permission) {
    ASSERT_EQ(store_.set(questionAbout(target), permission), std::nullopt);
    ASSERT_TRUE(storeChanged_) << "the store is not watched";
    storeChanged_();
  }
  [[nodiscard]] Permission stored(std::string const& target = "com.example.toy") const {
    return store_.get(questionAbout(target));
  }

  support::TemporaryFolder folder_;
  privacy::PermissionStore store_{folder_ / "privacy/permissions.json"};
  WatchedLoop loop_;
  int asked_ = 0;
  std::vector<std::string> shown_;  ///< every question ever shown
  std::function<void(Answer)> answered_;
  std::function<void()> storeChanged_;
  std::unique_ptr<ConsentDesk> desk_ = std::make_unique<ConsentDesk>(
      loop_, store_,
      [this](std::string const& name, std::function<void(Answer)> answered) {
        shown_.push_back(name);
        answered_ = std::move(answered);
        return Subscription([this] { answered_ = nullptr; });
      },
      [this](std::string const& path, std::function<void()> changed) {
        EXPECT_EQ(path, store_.path());
        storeChanged_ = std::move(changed);
        return Subscription([this] { storeChanged_ = nullptr; });
      });
};

TEST_F(Desk, LetsTheScriptWaitUntilTheUserHasAnswered) {
  auto script = ask();
  EXPECT_THAT(shown_, ElementsAre("com.example.toy"));
  EXPECT_TRUE(isWaiting(script));
  answer(Answer::allow);
  EXPECT_EQ(script.get(), Permission::allow);
  EXPECT_EQ(stored(), Permission::allow);
  EXPECT_FALSE(answered_) << "the window is still there";
  EXPECT_FALSE(storeChanged_) << "the store is still watched";
}

TEST_F(Desk, StoresARefusal) {
  auto script = ask();
  answer(Answer::refuse);
  EXPECT_EQ(script.get(), Permission::deny);
  EXPECT_EQ(stored(), Permission::deny);
}

TEST_F(Desk, StoresNothingWhenTheUserClosesTheQuestion) {
  auto script = ask();
  answer(Answer::none);
  EXPECT_EQ(script.get(), Permission::undecided);
  EXPECT_EQ(stored(), Permission::undecided);
}

TEST_F(Desk, AsksOnceForAllScriptsThatWantTheSame) {
  std::vector<Script> scripts;
  for (int i = 0; i < 8; ++i) scripts.push_back(ask());
  EXPECT_EQ(shown_.size(), 1U);
  answer(Answer::allow);
  for (auto& script : scripts) EXPECT_EQ(script.get(), Permission::allow);
}

TEST_F(Desk, ShowsDifferentQuestionsOneAfterTheOther) {
  auto first = ask("a");
  auto second = ask("b");
  auto alsoFirst = ask("a");
  EXPECT_THAT(shown_, ElementsAre("a"));
  answer(Answer::refuse);
  EXPECT_EQ(first.get(), Permission::deny);
  EXPECT_EQ(alsoFirst.get(), Permission::deny);
  EXPECT_TRUE(isWaiting(second));
  EXPECT_THAT(shown_, ElementsAre("a", "b"));
  answer(Answer::allow);
  EXPECT_EQ(second.get(), Permission::allow);
}

TEST_F(Desk, GoesOnWithADecisionThatWasMadeElsewhere) {
  auto script = ask();
  decide("com.example.toy", Permission::allow);
  EXPECT_EQ(script.get(), Permission::allow);
  EXPECT_FALSE(answered_) << "the window is still there";
}

TEST_F(Desk, KeepsAskingWhenSomethingElseWasDecidedElsewhere) {
  auto script = ask();
  decide("com.example.other", Permission::deny);
  EXPECT_TRUE(isWaiting(script));
  EXPECT_EQ(shown_.size(), 1U) << "it is not shown anew";
  answer(Answer::allow);
  EXPECT_EQ(script.get(), Permission::allow);
}

TEST_F(Desk, DoesNotShowAQuestionThatWasDecidedWhileItWaited) {
  auto first = ask("a");
  auto second = ask("b");
  decide("b", Permission::deny);
  EXPECT_EQ(second.get(), Permission::deny) << "before the first question is answered";
  EXPECT_TRUE(isWaiting(first));
  answer(Answer::none);
  EXPECT_EQ(first.get(), Permission::undecided);
  EXPECT_THAT(shown_, ElementsAre("a"));
}

TEST_F(Desk, ShowsNothingWhenTheDecisionCameBeforeTheQuestion) {
  ASSERT_EQ(store_.set(questionAbout("com.example.toy"), Permission::deny), std::nullopt);
  auto script = ask();
  EXPECT_EQ(script.get(), Permission::deny);
  EXPECT_TRUE(shown_.empty());
}

TEST_F(Desk, DoesNotComeBackToAClosedQuestionWhileScriptsAskEachSecond) {
  auto script = ask();
  answer(Answer::none);
  EXPECT_EQ(script.get(), Permission::undecided);
  for (int second = 0; second < 10; ++second) {
    loop_.advance(1s);
    EXPECT_EQ(ask().get(), Permission::undecided) << second;
  }
  EXPECT_EQ(shown_.size(), 1U);
  EXPECT_EQ(stored(), Permission::undecided);
}

TEST_F(Desk, AsksAgainAfterAPause) {
  auto script = ask();
  answer(Answer::none);
  loop_.advance(ConsentDesk::kPauseAfterNoAnswer - 1ms);
  EXPECT_EQ(ask().get(), Permission::undecided);
  loop_.advance(ConsentDesk::kPauseAfterNoAnswer);
  auto again = ask();
  EXPECT_EQ(shown_.size(), 2U);
  answer(Answer::allow);
  EXPECT_EQ(again.get(), Permission::allow);
}

TEST_F(Desk, AsksAtOnceWhenTheUserWantsToBeAsked) {
  auto script = ask();
  answer(Answer::none);
  EXPECT_EQ(ask().get(), Permission::undecided);
  desk_->forgetClosedQuestions();
  auto wanted = ask();
  EXPECT_EQ(shown_.size(), 2U);
  EXPECT_TRUE(isWaiting(wanted));
  answer(Answer::none);
  EXPECT_EQ(ask().get(), Permission::undecided) << "it was closed again";
  EXPECT_EQ(shown_.size(), 2U);
}

TEST_F(Desk, ANewDecisionCountsAlsoAfterTheQuestionWasClosed) {
  auto script = ask();
  answer(Answer::none);
  ASSERT_EQ(store_.set(questionAbout("com.example.toy"), Permission::allow), std::nullopt);
  EXPECT_EQ(ask().get(), Permission::allow);
}

TEST_F(Desk, AClosedQuestionSaysNothingAboutAnotherApplication) {
  auto script = ask("a");
  answer(Answer::none);
  auto other = ask("b");
  EXPECT_THAT(shown_, ElementsAre("a", "b"));
  answer(Answer::allow);
  EXPECT_EQ(other.get(), Permission::allow);
}

TEST_F(Desk, AnAnswerThatCannotBeStoredCountsUntilTheEnd) {
  folder_.write("privacy", "a file where the folder should be");
  auto script = ask();
  answer(Answer::allow);
  EXPECT_EQ(script.get(), Permission::allow);
  EXPECT_EQ(stored(), Permission::undecided);
  EXPECT_EQ(ask().get(), Permission::allow);
  EXPECT_EQ(shown_.size(), 1U) << "each event of the script would ask again";
}

TEST_F(Desk, LetsWaitingScriptsGoWhenItEnds) {
  auto shown = ask("a");
  auto queued = ask("b");
  desk_.reset();
  EXPECT_EQ(shown.get(), Permission::undecided);
  EXPECT_EQ(queued.get(), Permission::undecided);
}

TEST_F(Desk, HoldsNobodyUpOnceTheLoopHasEnded) {
  loop_.end();
  auto script = std::async(std::launch::async,
                           [this] { return desk_->ask(questionAbout("com.example.toy"), {"Toy", "com.example.toy"}); });
  EXPECT_EQ(script.get(), Permission::undecided);
}

}  // namespace
}  // namespace morla::linux
