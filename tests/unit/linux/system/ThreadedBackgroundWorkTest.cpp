#include "platform/linux/system/ThreadedBackgroundWork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <future>
#include <latch>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "DiagnosticLines.h"
#include "platform/fake/FakeMainLoop.h"

namespace morla::linux {
namespace {

constexpr auto kLongIdleTime = std::chrono::minutes(5);

/// Fulfils a promise when the thread that touched it ends.
struct ThreadEnd {
  std::promise<void> promise;
  ~ThreadEnd() { promise.set_value(); }
};

TEST(ThreadedBackgroundWork, RunsAJobOnAnotherThread) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop);
  std::promise<std::thread::id> ran;
  background.run(QualityOfService::userInitiated, [&] { ran.set_value(std::this_thread::get_id()); });
  EXPECT_NE(ran.get_future().get(), std::this_thread::get_id());
}

TEST(ThreadedBackgroundWork, ThreeHundredJobsRunSideBySide) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop);
  constexpr int kJobs = 300;
  std::latch everyJobRuns(kJobs);
  std::latch everyJobHasEnded(kJobs);
  for (int i = 0; i < kJobs; ++i) {
    auto const quality = i % 2 == 0 ? QualityOfService::userInitiated : QualityOfService::utility;
    background.run(quality, [&] {
      everyJobRuns.arrive_and_wait();  // returns only when all of them are under way
      everyJobHasEnded.count_down();
    });
  }
  everyJobHasEnded.wait();
}

TEST(ThreadedBackgroundWork, AFifthJobIsNotHeldUpByFourSilentOnes) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop);
  std::promise<void> release;
  auto const released = release.get_future().share();
  for (int i = 0; i < 4; ++i) background.run(QualityOfService::userInitiated, [released] { released.wait(); });
  std::promise<int> fifth;
  background.run(QualityOfService::userInitiated, [&] { fifth.set_value(5); });
  EXPECT_EQ(fifth.get_future().get(), 5);
  release.set_value();
}

TEST(ThreadedBackgroundWork, AnIdleThreadIsUsedAgain) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop, kLongIdleTime);
  std::set<std::thread::id> threads;
  // A thread that has fulfilled the promise may not be idle yet, and a new one may find its job taken: so there may be
  // a few, some of which never ran anything, but not one for each job.
  for (int i = 0; i < 100; ++i) {
    std::promise<std::thread::id> ran;
    background.run(QualityOfService::userInitiated, [&] { ran.set_value(std::this_thread::get_id()); });
    threads.insert(ran.get_future().get());
  }
  EXPECT_LT(background.threadCount(), 50U);
  EXPECT_LE(threads.size(), background.threadCount());
}

TEST(ThreadedBackgroundWork, AnIdleThreadEndsAfterAWhile) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop, std::chrono::milliseconds(1));
  std::promise<std::future<void>> job;
  background.run(QualityOfService::userInitiated, [&] {
    thread_local ThreadEnd end;
    job.set_value(end.promise.get_future());
  });
  auto ended = job.get_future().get();
  ended.wait();
  EXPECT_EQ(background.threadCount(), 0U);
}

TEST(ThreadedBackgroundWork, UtilityJobsRunAtALowerPriority) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop);
  auto const niceness = [&](QualityOfService quality) {
    std::promise<int> ran;
    background.run(quality, [&] { ran.set_value(getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()))); });
    return ran.get_future().get();
  };
  int const usual = niceness(QualityOfService::userInitiated);
  EXPECT_EQ(niceness(QualityOfService::utility), 10);
  EXPECT_EQ(niceness(QualityOfService::userInitiated), usual);
}

TEST(ThreadedBackgroundWork, WhatAJobHoldsGoesWithIt) {
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop, kLongIdleTime);
  struct Told {
    std::promise<void> promise;
    ~Told() { promise.set_value(); }
  };
  auto held = std::make_shared<Told>();
  auto gone = held->promise.get_future();
  background.run(QualityOfService::utility, [held = std::move(held)] {});
  gone.wait();  // the thread idles for minutes
}

/// A system that has no thread left, until it has.
struct FullSystem {
  bool isFull = true;
  int refusals = 0;

  ThreadedBackgroundWork::StartThread starter() {
    return [this](std::function<void()> body) {
      if (isFull) return ++refusals, false;
      std::thread(std::move(body)).detach();
      return true;
    };
  }
};

TEST(ThreadedBackgroundWork, AJobWhoseThreadCannotBeStartedRunsOnceOneCan) {
  FullSystem system;
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop, kLongIdleTime, system.starter());
  DiagnosticLines const lines;
  std::promise<void> ran;
  std::promise<void> alsoRan;
  background.run(QualityOfService::userInitiated, [&] { ran.set_value(); });
  background.run(QualityOfService::utility, [&] { alsoRan.set_value(); });
  EXPECT_EQ(background.threadCount(), 0U);
  loop.advance(std::chrono::minutes(1));
  EXPECT_GT(system.refusals, 500) << "ten attempts a second";
  EXPECT_EQ(lines.get().size(), 1U) << "told once";

  system.isFull = false;
  loop.advance(ThreadedBackgroundWork::kRetryInterval);
  ran.get_future().wait();
  alsoRan.get_future().wait();
  EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST(ThreadedBackgroundWork, AJobWhoseThreadCannotBeStartedIsTakenByOneThatComesFree) {
  FullSystem system;
  system.isFull = false;
  fake::FakeMainLoop loop;
  ThreadedBackgroundWork background(loop, kLongIdleTime, system.starter());
  std::promise<void> release;
  std::promise<void> running;
  background.run(QualityOfService::userInitiated, [&] {
    running.set_value();
    release.get_future().wait();
  });
  running.get_future().wait();
  system.isFull = true;
  std::promise<void> ran;
  background.run(QualityOfService::userInitiated, [&] { ran.set_value(); });
  release.set_value();
  ran.get_future().wait();
  loop.advance(ThreadedBackgroundWork::kRetryInterval);
  EXPECT_EQ(loop.pendingTimers(), 0U) << "nothing is left to be retried";
}

TEST(ThreadedBackgroundWork, DestructionWaitsForWhatRuns) {
  std::atomic<int> ended = 0;
  std::latch running(8 + 1);
  {
    fake::FakeMainLoop loop;
    ThreadedBackgroundWork background(loop);
    for (int i = 0; i < 8; ++i) {
      background.run(QualityOfService::userInitiated, [&] {
        running.arrive_and_wait();
        ++ended;
      });
    }
    running.arrive_and_wait();
  }
  EXPECT_EQ(ended, 8);
}

TEST(ThreadedBackgroundWork, DestructionEndsIdleThreadsAtOnce) {
  auto const before = std::chrono::steady_clock::now();
  {
    fake::FakeMainLoop loop;
    ThreadedBackgroundWork background(loop, kLongIdleTime);
    std::promise<void> ran;
    background.run(QualityOfService::userInitiated, [&] { ran.set_value(); });
    ran.get_future().wait();
  }
  EXPECT_LT(std::chrono::steady_clock::now() - before, kLongIdleTime / 2);
}

}  // namespace
}  // namespace morla::linux
