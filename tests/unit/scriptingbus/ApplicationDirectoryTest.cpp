#include "scriptingbus/ApplicationDirectory.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <chrono>

#include "ServerThread.h"
#include "support/PrivateBus.h"

namespace morla::scriptingbus {
namespace {

using testing::ServerThread;

void ignore(applescript::AppleEvent const&, ScriptingServer::Answer const&) {}

class ApplicationDirectoryTest : public ::testing::Test {
 protected:
  support::PrivateBus bus_;
  ConnectionPool pool_;
  ApplicationDirectory directory_{pool_};
};

TEST_F(ApplicationDirectoryTest, FindsNobodyOnAnEmptyBus) {
  EXPECT_TRUE(directory_.scriptableApplications().empty());
  EXPECT_FALSE(directory_.isRunning("com.example.one"));
  EXPECT_FALSE(directory_.isRunning("nonsense"));
  EXPECT_FALSE(directory_.isRunning("\xff"));
}

TEST_F(ApplicationDirectoryTest, FindsNobodyWithoutABus) {
  bus_.kill();
  EXPECT_TRUE(directory_.scriptableApplications().empty());
  EXPECT_FALSE(directory_.isRunning("com.example.one"));
}

TEST_F(ApplicationDirectoryTest, ListsThemInTheOrderInWhichTheyCame) {
  ServerThread const b({"com.example.b", "Second letter", "1", ""}, ignore);
  ServerThread const a({"com.example.a", "First letter", "1", ""}, ignore);
  auto const applications = directory_.scriptableApplications();
  ASSERT_EQ(applications.size(), 2U);
  EXPECT_EQ(applications[0].busName, "com.example.b");
  EXPECT_EQ(applications[0].name, "Second letter");
  EXPECT_EQ(applications[0].processIdentifier, ::getpid());
  EXPECT_EQ(applications[1].busName, "com.example.a");
}

TEST_F(ApplicationDirectoryTest, LeavesOutASilentProgramAndIsNotHeldUpByItAgain) {
  sd_bus* raw = nullptr;
  ASSERT_GE(sd_bus_open_user(&raw), 0);
  BusPointer const silent(raw);
  ASSERT_GE(sd_bus_request_name(raw, "com.example.silent", 0), 0);
  ServerThread const server({"com.example.a", "A", "1", ""}, ignore);

  EXPECT_EQ(directory_.scriptableApplications().size(), 1U);
  // Two seconds would pass in each of these if it was asked again.
  auto const start = std::chrono::steady_clock::now();
  for (int i = 0; i < 6; ++i) EXPECT_EQ(directory_.scriptableApplications().size(), 1U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_TRUE(directory_.isRunning("com.example.silent"));
  EXPECT_EQ(directory_.nameOf("com.example.silent"), std::nullopt);
}

TEST_F(ApplicationDirectoryTest, AsksAnApplicationThatWasStartedAgainForItsNewName) {
  {
    ServerThread const server({"com.example.a", "Old", "1", ""}, ignore);
    EXPECT_EQ(directory_.nameOf("com.example.a"), "Old");
  }
  EXPECT_EQ(directory_.nameOf("com.example.a"), std::nullopt);
  ServerThread const server({"com.example.a", "New", "1", ""}, ignore);
  EXPECT_EQ(directory_.nameOf("com.example.a"), "New");
}

}  // namespace
}  // namespace morla::scriptingbus
