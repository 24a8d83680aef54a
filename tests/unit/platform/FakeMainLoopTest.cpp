#include "platform/fake/FakeMainLoop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace morla::fake {
namespace {

using namespace std::chrono_literals;

TEST(FakeMainLoop, NothingHappensWithoutTheTest) {
  FakeMainLoop loop;
  int ran = 0;
  loop.post([&ran] { ++ran; });
  auto const timer = loop.after(0s, [&ran] { ++ran; });
  EXPECT_EQ(ran, 0);
}

TEST(FakeMainLoop, PostedWorkRunsBeforeTheTimersThatAreDueAtTheSameTime) {
  FakeMainLoop loop;
  std::vector<int> order;
  auto const timer = loop.after(0s, [&order] { order.push_back(2); });
  loop.post([&order] { order.push_back(1); });
  loop.advance(0s);
  EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(FakeMainLoop, TimersRunAtTheirOwnTimeInOrder) {
  FakeMainLoop loop;
  std::vector<Duration> times;
  auto const late = loop.after(20ms, [&] { times.push_back(loop.now().sinceStart); });
  auto const early = loop.after(10ms, [&] { times.push_back(loop.now().sinceStart); });
  loop.advance(1s);
  EXPECT_EQ(times, (std::vector<Duration>{10ms, 20ms}));
  EXPECT_EQ(loop.now().sinceStart, Duration(1s));
}

TEST(FakeMainLoop, EveryRepeatsUntilItsSubscriptionEnds) {
  FakeMainLoop loop;
  int ran = 0;
  auto timer = loop.every(100ms, [&ran] { ++ran; });
  loop.advance(350ms);
  EXPECT_EQ(ran, 3);
  timer.end();
  loop.advance(1s);
  EXPECT_EQ(ran, 3);
  EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST(FakeMainLoop, EveryMayEndItself) {
  FakeMainLoop loop;
  int ran = 0;
  Subscription timer;
  timer = loop.every(100ms, [&] {
    ++ran;
    timer.end();
  });
  loop.advance(1s);
  EXPECT_EQ(ran, 1);
}

TEST(FakeBackgroundWork, JobEndsAfterTheTimeItTakes) {
  FakeMainLoop loop;
  FakeBackgroundWork background(loop);
  background.takes(120s);
  background.run(QualityOfService::utility, [] {});
  loop.advance(119s);
  EXPECT_EQ(background.finishedJobs(), 0);
  loop.advance(1s);
  EXPECT_EQ(background.finishedJobs(), 1);
}

TEST(FakeBackgroundWork, LaterJobsDoNotWaitForASlowOne) {
  FakeMainLoop loop;
  FakeBackgroundWork background(loop);
  bool quickRan = false;
  background.takes(120s);
  background.run(QualityOfService::userInitiated, [] {});
  background.takes(1ms);
  background.run(QualityOfService::userInitiated, [&quickRan] { quickRan = true; });
  loop.advance(1ms);
  EXPECT_TRUE(quickRan);
}

}  // namespace
}  // namespace morla::fake
