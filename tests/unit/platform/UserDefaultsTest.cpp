#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/fake/FakeSystem.h"

namespace morla::platform {
namespace {

TEST(UserDefaults, AreWrittenSeveralKeysAtATime) {
  fake::FakeUserDefaults defaults;
  defaults.set({{"x", 1.5}, {"y", 2.5}});
  EXPECT_EQ(defaults.number("x"), 1.5);
  EXPECT_EQ(defaults.number("y"), 2.5);
}

TEST(UserDefaults, ALiteralIsText) {
  fake::FakeUserDefaults defaults;
  defaults.set("key", "text");
  EXPECT_EQ(defaults.text("key"), "text");
  EXPECT_EQ(defaults.boolean("key"), std::nullopt);
}

}  // namespace
}  // namespace morla::platform
