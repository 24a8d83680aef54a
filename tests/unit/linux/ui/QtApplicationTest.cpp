#include "platform/linux/ui/QtApplication.h"

#include <gtest/gtest.h>

#include <string>

namespace morla::linux {
namespace {

TEST(QtApplication, RunsUntilItIsAskedToTerminate) {
  QtMainLoop loop;
  QtApplication application(loop);
  int turns = 0;
  loop.post([&] {
    ++turns;
    application.terminate();
  });
  EXPECT_EQ(application.run(), 0);
  EXPECT_EQ(turns, 1);
}

TEST(QtApplication, DoesNotRunWhenItWasAskedToTerminateBefore) {
  QtMainLoop loop;
  QtApplication application(loop);
  bool hasRun = false;
  loop.post([&] { hasRun = true; });
  application.terminate();
  EXPECT_EQ(application.run(), 0);
  EXPECT_FALSE(hasRun);
}

TEST(QtApplication, EndsTheLoopWhenItReturns) {
  QtMainLoop loop;
  QtApplication application(loop);
  loop.post([&] { application.terminate(); });
  application.run();
  auto held = std::make_shared<int>();
  std::weak_ptr<int> const seen = held;
  loop.post([held = std::move(held)] {});
  EXPECT_TRUE(seen.expired());
}

TEST(QtApplication, HandsARequestToItsHandlerAndTheOutcomeBack) {
  QtMainLoop loop;
  QtApplication application(loop);
  EXPECT_EQ(application.handleActionRequest("quit"), platform::ActionOutcome::unavailable);
  std::string asked;
  application.onActionRequest([&](std::string_view action) {
    asked = action;
    return action == "quit" ? platform::ActionOutcome::done : platform::ActionOutcome::unknown;
  });
  EXPECT_EQ(application.handleActionRequest("quit"), platform::ActionOutcome::done);
  EXPECT_EQ(asked, "quit");
  EXPECT_EQ(application.handleActionRequest("dance"), platform::ActionOutcome::unknown);
}

}  // namespace
}  // namespace morla::linux
