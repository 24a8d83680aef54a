#include "base/MainThread.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "base/Log.h"
#include "base/NotificationCenter.h"
#include "base/Published.h"

namespace morla {
namespace {

bool isMainThreadElsewhere() {
  bool result = true;
  std::thread([&] { result = isMainThread(); }).join();
  return result;
}

TEST(MainThread, IsTheOneThatLoadedTheProgram) {
  EXPECT_TRUE(isMainThread());
  EXPECT_FALSE(isMainThreadElsewhere());
}

TEST(MainThread, AssertionPassesOnTheMainThread) {
  assertIsMainThread();
}

/// The death tests start the program anew, since a fork of a process with threads may hold their locks.
class MainThreadDeathTest : public testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  template <typename Work>
  static void onAnotherThread(Work const& work) {
    std::thread(work).join();
  }
};

TEST_F(MainThreadDeathTest, AssertionEndsTheProgramOnAnotherThreadAndNamesThePlace) {
  EXPECT_DEATH(onAnotherThread([] { assertIsMainThread(); }),
               "MainThreadTest\\.cpp:[0-9]+: .* must be called on the main thread");
}

TEST_F(MainThreadDeathTest, PublishedEndsTheProgramOnAnotherThread) {
  Published<int> value("Owner.value");
  EXPECT_DEATH(onAnotherThread([&] { value.set(1); }), "must be called on the main thread");
  EXPECT_DEATH(onAnotherThread([&] { auto const observation = value.willChange([](int) {}); }),
               "must be called on the main thread");
}

TEST_F(MainThreadDeathTest, NotificationCenterEndsTheProgramOnAnotherThread) {
  constexpr NotificationName kName{"name"};
  NotificationCenter center;
  EXPECT_DEATH(onAnotherThread([&] { center.post(kName); }), "must be called on the main thread");
  EXPECT_DEATH(onAnotherThread([&] { auto const observation = center.addObserver(kName, [](Notification const&) {}); }),
               "must be called on the main thread");
}

TEST_F(MainThreadDeathTest, LogEndsTheProgramOnAnotherThread) {
  EXPECT_DEATH(onAnotherThread([] { log("component", "message"); }), "must be called on the main thread");
}

}  // namespace
}  // namespace morla
