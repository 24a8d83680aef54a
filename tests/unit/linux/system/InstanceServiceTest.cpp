#include "platform/linux/system/InstanceService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "CapturedOutput.h"
#include "QtTestLoop.h"
#include "platform/linux/system/DoCommand.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"

namespace morla::linux {
namespace {

using platform::ActionOutcome;
using support::EnvironmentVariable;
using support::PrivateBus;
using testing::HasSubstr;

class InstanceServiceTest : public testing::Test {
 protected:
  PrivateBus privateBus_;
  QtTestLoop loop_;
  BusConnection bus_{openSessionBus().bus, loop_};
  InstanceService service_{bus_, loop_};

  /// Runs `morla do` beside the loop that serves it.
  Captured runDo(std::vector<std::string> const& arguments) {
    return capture([&] {
      std::atomic<bool> hasEnded = false;
      int status = -1;
      std::thread command([&] {
        status = doCommand(arguments);
        hasEnded = true;
        loop_.post([] {});
      });
      EXPECT_TRUE(loop_.runUntil([&] { return hasEnded.load(); }));
      command.join();
      return status;
    });
  }
};

TEST_F(InstanceServiceTest, OneProcessOfADesktopOwnsTheName) {
  EXPECT_EQ(service_.claim(), InstanceService::Claim::owned);
  BusConnection otherBus(openSessionBus().bus, loop_);
  InstanceService second(otherBus, loop_);
  EXPECT_EQ(second.claim(), InstanceService::Claim::alreadyRunning);
}

TEST_F(InstanceServiceTest, TheNameIsFreeAgainWhenItsOwnerEnds) {
  {
    BusConnection otherBus(openSessionBus().bus, loop_);
    InstanceService first(otherBus, loop_);
    EXPECT_EQ(first.claim(), InstanceService::Claim::owned);
  }
  EXPECT_EQ(service_.claim(), InstanceService::Claim::owned);
}

TEST_F(InstanceServiceTest, AnActionIsHandedOverAndItsOutcomeBecomesTheExitStatus) {
  ASSERT_EQ(service_.claim(), InstanceService::Claim::owned);
  struct Row {
    ActionOutcome outcome;
    int status;
    char const* complaint;
  };
  for (auto const& [outcome, status, complaint] :
       {Row{ActionOutcome::done, 0, ""}, Row{ActionOutcome::unavailable, 1, "not available now"},
        Row{ActionOutcome::unknown, 1, "does not know"}}) {
    std::string asked;
    service_.setHandler([&](std::string_view action) {
      asked = action;
      return outcome;
    });
    auto const result = runDo({"toggleWindowMode"});
    EXPECT_EQ(asked, "toggleWindowMode");
    EXPECT_EQ(result.status, status);
    EXPECT_THAT(result.errors, HasSubstr(complaint));
    EXPECT_EQ(result.errors.empty(), status == 0);
  }
}

TEST_F(InstanceServiceTest, EveryActionIsUnavailableUntilThereIsAHandler) {
  ASSERT_EQ(service_.claim(), InstanceService::Claim::owned);
  EXPECT_EQ(runDo({"quit"}).status, 1);
}

TEST_F(InstanceServiceTest, WithoutARunningProgramAnActionFails) {
  auto const result = runDo({"openSettings"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, HasSubstr("MORLA is not running"));
}

TEST(DoCommand, AnUnknownActionIsAMatterOfUsageAndAsksNobody) {
  EnvironmentVariable const bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  for (auto const& arguments : std::vector<std::vector<std::string>>{{}, {"fly"}, {"quit", "now"}, {"Quit"}}) {
    auto const result = capture([&] { return doCommand(arguments); });
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, HasSubstr("toggleCheckMode"));
  }
}

TEST(DoCommand, SaysSoWhenThereIsNoBus) {
  EnvironmentVariable const bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  auto const result = capture([] { return doCommand({"quit"}); });
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, HasSubstr("there is no session bus"));
}

}  // namespace
}  // namespace morla::linux
