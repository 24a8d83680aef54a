#include "base/Task.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/Lifetime.h"
#include "platform/fake/FakeMainLoop.h"

namespace morla {
namespace {

using fake::FakeBackgroundWork;
using fake::FakeMainLoop;
using namespace std::chrono_literals;

/// Counts how many of it are alive, to see what becomes of a coroutine's frame.
struct Counted {
  explicit Counted(int& alive) : alive_(&alive) { ++*alive_; }
  Counted(Counted const& other) : alive_(other.alive_) { ++*alive_; }
  Counted& operator=(Counted const&) = delete;
  ~Counted() { --*alive_; }
  int* alive_;
};

Task<int> answerOf(int value) {
  co_return value;
}

Task<> addAnswers(std::vector<int>& out) {
  int const first = co_await answerOf(3);
  int const second = co_await answerOf(4);
  out.push_back(first + second);
}

TEST(Task, StartsOnlyWhenAwaited) {
  std::vector<int> out;
  {
    auto const task = addAnswers(out);
    EXPECT_TRUE(out.empty());
  }
  EXPECT_TRUE(out.empty());
}

TEST(Task, GivesItsValueToTheOneThatAwaitsIt) {
  std::vector<int> out;
  detach(addAnswers(out));
  EXPECT_EQ(out, std::vector{7});
}

Task<> recordSleep(FakeMainLoop& loop, Duration duration, CancellationToken token, std::vector<SleepEnd>& out) {
  auto const end = co_await sleepFor(loop, duration, token);
  out.push_back(end);
}

TEST(Task, SleepEndsAfterItsDurationToTheMillisecond) {
  FakeMainLoop loop;
  CancellationSource source;
  std::vector<SleepEnd> out;
  detach(recordSleep(loop, 1s, source.token(), out));
  loop.advance(999ms);
  EXPECT_TRUE(out.empty());
  loop.advance(1ms);
  EXPECT_EQ(out, std::vector{SleepEnd::elapsed});
}

TEST(Task, CancelledSleepEndsAtOnce) {
  FakeMainLoop loop;
  CancellationSource source;
  std::vector<SleepEnd> out;
  detach(recordSleep(loop, 1s, source.token(), out));
  loop.advance(10ms);
  source.cancel();
  EXPECT_TRUE(out.empty()) << "resumed inside cancel()";
  loop.runReady();
  EXPECT_EQ(out, std::vector{SleepEnd::cancelled});
  EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST(Task, SleepWithACancelledTokenEndsAtOnce) {
  FakeMainLoop loop;
  CancellationSource source;
  source.cancel();
  std::vector<SleepEnd> out;
  detach(recordSleep(loop, 1h, source.token(), out));
  loop.runReady();
  EXPECT_EQ(out, std::vector{SleepEnd::cancelled});
}

TEST(Task, CancellingAfterTheSleepEndedChangesNothing) {
  FakeMainLoop loop;
  CancellationSource source;
  std::vector<SleepEnd> out;
  detach(recordSleep(loop, 1s, source.token(), out));
  loop.advance(1s);
  source.cancel();
  loop.runReady();
  EXPECT_EQ(out, std::vector{SleepEnd::elapsed});
}

TEST(Task, CancellingInTheTurnInWhichTheSleepElapsesResumesOnce) {
  FakeMainLoop loop;
  CancellationSource source;
  std::vector<SleepEnd> out;
  detach(recordSleep(loop, 1s, source.token(), out));
  auto const canceller = loop.after(1s, [&source] { source.cancel(); });
  loop.advance(1s);
  EXPECT_EQ(out.size(), 1u);
}

Task<> awaitAnswer(FakeMainLoop& loop, std::function<void(Answer<std::string>::Deliver)> start, Counted /*frame*/,
                   std::vector<std::string>& out) {
  auto const answer = co_await Answer<std::string>(loop, std::move(start));
  out.push_back(answer);
}

TEST(Task, AnswerResumesOnALaterTurnEvenWhenItIsThereAtOnce) {
  FakeMainLoop loop;
  int alive = 0;
  std::vector<std::string> out;
  detach(awaitAnswer(loop, [](auto deliver) { deliver("now"); }, Counted(alive), out));
  EXPECT_TRUE(out.empty());
  loop.runReady();
  EXPECT_EQ(out, std::vector<std::string>{"now"});
  EXPECT_EQ(alive, 0);
}

TEST(Task, OnlyTheFirstOfTwoAnswersCounts) {
  FakeMainLoop loop;
  int alive = 0;
  std::vector<std::string> out;
  auto const twice = [](auto deliver) {
    deliver("first");
    deliver("second");
  };
  detach(awaitAnswer(loop, twice, Counted(alive), out));
  loop.runReady();
  EXPECT_EQ(out, std::vector<std::string>{"first"});
}

TEST(Task, AnAnswerThatNobodyWillGiveDestroysTheWholeChain) {
  FakeMainLoop loop;
  int alive = 0;
  std::vector<std::string> out;
  std::optional<Answer<std::string>::Deliver> kept;
  detach(awaitAnswer(loop, [&kept](auto deliver) { kept = std::move(deliver); }, Counted(alive), out));
  EXPECT_EQ(alive, 1);
  kept.reset();
  EXPECT_EQ(alive, 0);
  EXPECT_TRUE(out.empty());
}

TEST(Task, ALoopThatEndsDestroysWhatSleepsInIt) {
  CancellationSource source;
  std::vector<SleepEnd> out;
  {
    FakeMainLoop loop;
    detach(recordSleep(loop, 1s, source.token(), out));
  }
  source.cancel();
  EXPECT_TRUE(out.empty());
}

TEST(Task, AnswerFromAnotherThreadResumesOnTheMainThread) {
  FakeMainLoop loop;
  int alive = 0;
  std::vector<std::string> out;
  std::thread thread;
  auto const fromThread = [&thread](Answer<std::string>::Deliver deliver) {
    thread = std::thread([deliver = std::move(deliver)] { deliver("from afar"); });
  };
  detach(awaitAnswer(loop, fromThread, Counted(alive), out));
  thread.join();
  loop.runReady();
  EXPECT_EQ(out, std::vector<std::string>{"from afar"});
}

Task<> computeInBackground(FakeMainLoop& loop, FakeBackgroundWork& background, std::vector<int>& out) {
  std::function<int()> const job = [] { return 42; };
  int const value = co_await inBackground<int>(loop, background, QualityOfService::userInitiated, job);
  out.push_back(value);
}

TEST(Task, BackgroundJobHandsItsResultBack) {
  FakeMainLoop loop;
  FakeBackgroundWork background(loop);
  background.takes(250ms);
  std::vector<int> out;
  detach(computeInBackground(loop, background, out));
  loop.advance(249ms);
  EXPECT_TRUE(out.empty());
  loop.advance(1ms);
  EXPECT_EQ(out, std::vector{42});
  EXPECT_EQ(background.lastQuality(), QualityOfService::userInitiated);
}

class Sleeper {
 public:
  Sleeper(FakeMainLoop& loop, int& wokenUp) : loop_(loop), wokenUp_(wokenUp) {}
  Task<> sleepAndCount() {
    auto const alive = life_.reference();
    int& wokenUp = wokenUp_;
    CancellationSource const never;
    co_await sleepFor(loop_, 1s, never.token());
    if (!alive) co_return;
    ++wokenUp;
  }

 private:
  FakeMainLoop& loop_;
  int& wokenUp_;
  Lifetime life_;
};

TEST(Task, CoroutineOfAGoneOwnerEndsAfterItsResume) {
  FakeMainLoop loop;
  int wokenUp = 0;
  auto sleeper = std::make_unique<Sleeper>(loop, wokenUp);
  detach(sleeper->sleepAndCount());
  sleeper.reset();
  loop.advance(2s);
  EXPECT_EQ(wokenUp, 0);
}

}  // namespace
}  // namespace morla
