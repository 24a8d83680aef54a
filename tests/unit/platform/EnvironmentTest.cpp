#include "platform/Environment.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/fake/FakePlatform.h"

namespace morla::platform {
namespace {

std::vector<std::string> events;

struct First {
  static std::unique_ptr<First> make(Environment&) { return std::make_unique<First>(); }
  First() { events.emplace_back("make First"); }
  ~First() { events.emplace_back("end First"); }
};

struct Second {
  static std::unique_ptr<Second> make(Environment& environment) {
    environment.shared<First>();
    return std::make_unique<Second>();
  }
  Second() { events.emplace_back("make Second"); }
  ~Second() { events.emplace_back("end Second"); }
};

TEST(Environment, MakesASharedObjectOnFirstUseAndKeepsIt) {
  events.clear();
  fake::FakePlatform platform;
  Environment environment(platform.platform());
  EXPECT_TRUE(events.empty());
  auto& object = environment.shared<First>();
  EXPECT_EQ(&environment.shared<First>(), &object);
  EXPECT_EQ(events, std::vector<std::string>{"make First"});
}

TEST(Environment, SharedObjectsEndInTheReverseOrderOfTheirMaking) {
  events.clear();
  fake::FakePlatform platform;
  {
    Environment environment(platform.platform());
    environment.shared<Second>();
  }
  EXPECT_EQ(events, (std::vector<std::string>{"make First", "make Second", "end Second", "end First"}));
}

TEST(Environment, TheOneBeforeTakesOverWhenTheActiveOneEnds) {
  fake::FakePlatform platform;
  Environment outer(platform.platform());
  {
    Environment inner(platform.platform());
    EXPECT_EQ(&Environment::active(), &inner);
  }
  EXPECT_EQ(&Environment::active(), &outer);
}

TEST(EnvironmentDeathTest, AskingForTheActiveOneWhenThereIsNoneEndsTheProgram) {
  EXPECT_DEATH((void)Environment::active(), "outside an Environment");
}

}  // namespace
}  // namespace morla::platform
