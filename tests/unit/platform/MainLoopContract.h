#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/MainLoop.h"

/// What every MainLoop promises, run on each of them. A program that includes this names its loop with
///   INSTANTIATE_TYPED_TEST_SUITE_P(NAME, MainLoopContract, HARNESS);
/// where HARNESS can be made anew for each test and has
///   MainLoop& loop();
///   bool runUntil(std::function<bool()> isDone);   // runs turns until then; false when it gave up
///   void keepBusy(Duration time);                  // lets `time` pass without a turn of the loop
///   void endLoop();                                // what the end of the program does to the loop
namespace morla {

template <typename Harness>
class MainLoopContract : public testing::Test {
 protected:
  MainLoop& loop() { return harness_.loop(); }
  bool runUntil(std::function<bool()> isDone) { return harness_.runUntil(std::move(isDone)); }

  /// Runs everything that is due by now, and what that posted at once.
  bool runTurn() {
    auto const isDone = std::make_shared<bool>(false);
    loop().post([isDone] { *isDone = true; });
    return runUntil([isDone] { return *isDone; });
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(MainLoopContract);

TYPED_TEST_P(MainLoopContract, RunsWhatWasPostedInOrder) {
  std::vector<int> seen;
  for (int i = 0; i < 100; ++i) this->loop().post([&seen, i] { seen.push_back(i); });
  ASSERT_TRUE(this->runUntil([&] { return seen.size() == 100; }));
  for (int i = 0; i < 100; ++i) EXPECT_EQ(seen[static_cast<std::size_t>(i)], i);
}

TYPED_TEST_P(MainLoopContract, RunsNothingInsideTheCallThatScheduledIt) {
  bool hasRun = false;
  auto const run = [&hasRun] { hasRun = true; };
  this->loop().post(run);
  auto const once = this->loop().after(Duration::zero(), run);
  auto const often = this->loop().every(std::chrono::milliseconds(1), run);
  EXPECT_FALSE(hasRun);
  EXPECT_TRUE(this->runUntil([&] { return hasRun; }));
}

TYPED_TEST_P(MainLoopContract, LeavesWhatIsPostedByACallbackToALaterTurn) {
  std::vector<std::string> seen;
  this->loop().post([&] {
    this->loop().post([&] { seen.push_back("inner"); });
    seen.push_back("outer ends");
  });
  this->loop().post([&] { seen.push_back("second"); });
  ASSERT_TRUE(this->runUntil([&] { return seen.size() == 3; }));
  EXPECT_EQ(seen, (std::vector<std::string>{"outer ends", "second", "inner"}));
}

TYPED_TEST_P(MainLoopContract, KeepsTheOrderOfEachThreadThatPosts) {
  constexpr int kThreads = 4;
  constexpr int kPosts = 500;
  std::vector<std::vector<int>> seen(kThreads);
  std::atomic<int> offThread = 0;
  auto const mainThread = std::this_thread::get_id();
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kPosts; ++i) {
        this->loop().post([&, t, i] {
          seen[t].push_back(i);
          if (std::this_thread::get_id() != mainThread) ++offThread;
        });
      }
    });
  }
  for (auto& thread : threads) thread.join();
  ASSERT_TRUE(this->runUntil(
      [&] { return std::all_of(seen.begin(), seen.end(), [](auto const& of) { return of.size() == kPosts; }); }));
  EXPECT_EQ(offThread, 0);
  for (auto const& of : seen) EXPECT_TRUE(std::is_sorted(of.begin(), of.end()));
}

TYPED_TEST_P(MainLoopContract, WakesForAPostFromAnotherThread) {
  bool hasRun = false;
  std::thread thread;
  this->loop().post([&] { thread = std::thread([&] { this->loop().post([&] { hasRun = true; }); }); });
  EXPECT_TRUE(this->runUntil([&] {
    // A loop with virtual time has nothing else to wait for.
    if (thread.joinable()) thread.join();
    return hasRun;
  }));
}

TYPED_TEST_P(MainLoopContract, NeverRunsADelayedCallbackEarly) {
  for (auto const delay : {Duration(std::chrono::microseconds(300)), Duration(std::chrono::milliseconds(1)),
                           Duration(std::chrono::microseconds(7700)), Duration(std::chrono::milliseconds(50))}) {
    auto const due = this->loop().now() + delay;
    std::optional<TimePoint> ranAt;
    auto const timer = this->loop().after(delay, [&] { ranAt = this->loop().now(); });
    ASSERT_TRUE(this->runUntil([&] { return ranAt.has_value(); })) << delay.count() << " ns";
    EXPECT_GE(*ranAt, due) << delay.count() << " ns";
  }
}

TYPED_TEST_P(MainLoopContract, RunsDelayedCallbacksByTheirTimes) {
  std::vector<int> seen;
  auto const second = this->loop().after(std::chrono::milliseconds(40), [&] { seen.push_back(2); });
  auto const first = this->loop().after(std::chrono::milliseconds(10), [&] { seen.push_back(1); });
  ASSERT_TRUE(this->runUntil([&] { return seen.size() == 2; }));
  EXPECT_EQ(seen, (std::vector<int>{1, 2}));
}

TYPED_TEST_P(MainLoopContract, RunsADelayedCallbackOnce) {
  int runs = 0;
  bool isLater = false;
  auto const once = this->loop().after(std::chrono::milliseconds(1), [&] { ++runs; });
  auto const later = this->loop().after(std::chrono::milliseconds(20), [&] { isLater = true; });
  ASSERT_TRUE(this->runUntil([&] { return isLater; }));
  EXPECT_EQ(runs, 1);
}

TYPED_TEST_P(MainLoopContract, DoesNotRunADelayedCallbackWhoseSubscriptionEnded) {
  bool hasRun = false;
  bool isLater = false;
  auto ended = this->loop().after(std::chrono::milliseconds(1), [&] { hasRun = true; });
  auto const later = this->loop().after(std::chrono::milliseconds(20), [&] { isLater = true; });
  ended.end();
  ASSERT_TRUE(this->runUntil([&] { return isLater; }));
  EXPECT_FALSE(hasRun);
}

TYPED_TEST_P(MainLoopContract, DestroysTheCallbackWhenItsSubscriptionEnds) {
  auto held = std::make_shared<int>();
  std::weak_ptr<int> const seen = held;
  auto timer = this->loop().every(std::chrono::milliseconds(1), [held = std::move(held)] {});
  EXPECT_FALSE(seen.expired());
  timer.end();
  EXPECT_TRUE(seen.expired());
}

TYPED_TEST_P(MainLoopContract, RepeatsUntilTheSubscriptionEndsEvenFromInside) {
  int runs = 0;
  bool isLater = false;
  Subscription timer;
  timer = this->loop().every(std::chrono::milliseconds(1), [&] {
    if (++runs == 5) timer.end();
  });
  ASSERT_TRUE(this->runUntil([&] { return runs == 5; }));
  auto const later = this->loop().after(std::chrono::milliseconds(20), [&] { isLater = true; });
  ASSERT_TRUE(this->runUntil([&] { return isLater; }));
  EXPECT_EQ(runs, 5);
}

TYPED_TEST_P(MainLoopContract, LetsACallbackReplaceItsOwnSubscription) {
  int runs = 0;
  Subscription next;
  std::function<void()> again = [&] {
    if (++runs < 3) next = this->loop().after(std::chrono::milliseconds(1), again);
  };
  next = this->loop().after(std::chrono::milliseconds(1), again);
  EXPECT_TRUE(this->runUntil([&] { return runs == 3; }));
}

TYPED_TEST_P(MainLoopContract, RepeatsAtItsIntervalWithoutDrifting) {
  auto const start = this->loop().now();
  std::vector<TimePoint> ranAt;
  auto const timer = this->loop().every(std::chrono::milliseconds(5), [&] { ranAt.push_back(this->loop().now()); });
  ASSERT_TRUE(this->runUntil([&] { return ranAt.size() == 5; }));
  for (std::size_t i = 0; i < ranAt.size(); ++i) {
    EXPECT_GE(ranAt[i], start + static_cast<int>(i + 1) * std::chrono::milliseconds(5)) << "turn " << i;
  }
}

TYPED_TEST_P(MainLoopContract, DoesNotMakeUpForMissedTurns) {
  int runs = 0;
  auto const timer = this->loop().every(std::chrono::milliseconds(10), [&] { ++runs; });
  this->harness_.keepBusy(std::chrono::milliseconds(55));
  ASSERT_TRUE(this->runUntil([&] { return runs > 0; }));
  ASSERT_TRUE(this->runTurn());
  // Five turns were missed. The one that came late may be followed by one in its own time, not by four more.
  EXPECT_LE(runs, 2);
}

TYPED_TEST_P(MainLoopContract, GoesForwardInTime) {
  auto const before = this->loop().now();
  bool hasRun = false;
  auto const timer = this->loop().after(std::chrono::milliseconds(5), [&] { hasRun = true; });
  ASSERT_TRUE(this->runUntil([&] { return hasRun; }));
  EXPECT_GE(this->loop().now() - before, Duration(std::chrono::milliseconds(5)));
}

TYPED_TEST_P(MainLoopContract, DestroysUnrunWhatIsPostedAfterTheLoopEnded) {
  bool hasRun = false;
  auto held = std::make_shared<int>();
  std::weak_ptr<int> const seen = held;
  this->harness_.endLoop();
  this->loop().post([&hasRun, held = std::move(held)] { hasRun = true; });
  EXPECT_TRUE(seen.expired());
  EXPECT_FALSE(hasRun);
}

TYPED_TEST_P(MainLoopContract, DestroysUnrunWhatWaitsWhenTheLoopEnds) {
  bool hasRun = false;
  auto held = std::make_shared<int>();
  std::weak_ptr<int> const seen = held;
  this->loop().post([&hasRun, held] { hasRun = true; });
  auto const timer = this->loop().after(std::chrono::milliseconds(1), [&hasRun, held] { hasRun = true; });
  held.reset();
  this->harness_.endLoop();
  EXPECT_TRUE(seen.expired());
  EXPECT_FALSE(hasRun);
}

REGISTER_TYPED_TEST_SUITE_P(MainLoopContract, RunsWhatWasPostedInOrder, RunsNothingInsideTheCallThatScheduledIt,
                            LeavesWhatIsPostedByACallbackToALaterTurn, KeepsTheOrderOfEachThreadThatPosts,
                            WakesForAPostFromAnotherThread, NeverRunsADelayedCallbackEarly,
                            RunsDelayedCallbacksByTheirTimes, RunsADelayedCallbackOnce,
                            DoesNotRunADelayedCallbackWhoseSubscriptionEnded,
                            DestroysTheCallbackWhenItsSubscriptionEnds, RepeatsUntilTheSubscriptionEndsEvenFromInside,
                            LetsACallbackReplaceItsOwnSubscription, RepeatsAtItsIntervalWithoutDrifting,
                            DoesNotMakeUpForMissedTurns, GoesForwardInTime, DestroysUnrunWhatIsPostedAfterTheLoopEnded,
                            DestroysUnrunWhatWaitsWhenTheLoopEnds);

}  // namespace morla
