#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "platform/UserDefaults.h"

/// What every UserDefaults does. A test program includes this once and instantiates the suite with its own factory:
///   INSTANTIATE_TEST_SUITE_P(Fake, UserDefaultsContract, testing::Values(UserDefaultsFactory{...}));
namespace morla::platform {

/// Makes empty defaults that share nothing with those made before.
using UserDefaultsFactory = std::function<std::unique_ptr<UserDefaults>()>;

class UserDefaultsContract : public testing::TestWithParam<UserDefaultsFactory> {
 protected:
  std::unique_ptr<UserDefaults> made_ = GetParam()();
  UserDefaults& defaults_ = *made_;
};

TEST_P(UserDefaultsContract, HasNoValueAtFirst) {
  EXPECT_FALSE(defaults_.hasValue("key"));
  EXPECT_EQ(defaults_.value("key"), std::nullopt);
  EXPECT_EQ(defaults_.boolean("key"), std::nullopt);
  EXPECT_EQ(defaults_.integer("key"), std::nullopt);
  EXPECT_EQ(defaults_.number("key"), std::nullopt);
  EXPECT_EQ(defaults_.text("key"), std::nullopt);
}

TEST_P(UserDefaultsContract, ABooleanIsABooleanAndNothingElse) {
  for (bool const value : {true, false}) {
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.boolean("key"), value);
    EXPECT_EQ(defaults_.integer("key"), std::nullopt);
    EXPECT_EQ(defaults_.number("key"), std::nullopt);
    EXPECT_EQ(defaults_.text("key"), std::nullopt);
    EXPECT_TRUE(defaults_.hasValue("key"));
  }
}

TEST_P(UserDefaultsContract, TextIsTextAndNothingElse) {
  for (std::string const value : {"", "true", "1", "5.0", "caf\xC3\xA9 \"\\\n\t"}) {
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.text("key"), value);
    EXPECT_EQ(defaults_.boolean("key"), std::nullopt) << value;
    EXPECT_EQ(defaults_.integer("key"), std::nullopt) << value;
    EXPECT_EQ(defaults_.number("key"), std::nullopt) << value;
  }
}

TEST_P(UserDefaultsContract, ALiteralIsText) {
  defaults_.set("key", "literal");
  EXPECT_EQ(defaults_.text("key"), "literal");
}

TEST_P(UserDefaultsContract, AnIntegerIsANumberToo) {
  for (std::int64_t const value : {std::int64_t{0}, std::int64_t{1}, std::int64_t{-40}}) {
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.integer("key"), value);
    EXPECT_EQ(defaults_.number("key"), static_cast<double>(value));
    EXPECT_EQ(defaults_.boolean("key"), std::nullopt);
    EXPECT_EQ(defaults_.text("key"), std::nullopt);
  }
}

TEST_P(UserDefaultsContract, KeepsEveryBitOfAnInteger) {
  for (auto const value : {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
                           (std::int64_t{1} << 53) + 1}) {
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.integer("key"), value);
  }
}

TEST_P(UserDefaultsContract, ANumberWithoutFractionIsAnIntegerToo) {
  struct Row {
    double value;
    std::optional<std::int64_t> integer;
  };
  for (auto const& [value, integer] :
       {Row{5.0, 5}, Row{-0.0, 0}, Row{-7.0, -7}, Row{2.5, std::nullopt}, Row{1e18, 1'000'000'000'000'000'000},
        Row{9.3e18, std::nullopt}, Row{-9223372036854775808.0, std::numeric_limits<std::int64_t>::min()}}) {
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.number("key"), value);
    EXPECT_EQ(defaults_.integer("key"), integer) << value;
    EXPECT_EQ(defaults_.boolean("key"), std::nullopt) << value;
    EXPECT_EQ(defaults_.text("key"), std::nullopt) << value;
  }
}

TEST_P(UserDefaultsContract, ANumberThatIsNotFiniteCountsAsAbsent) {
  for (double const value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    defaults_.set("key", 1.5);
    defaults_.set("key", value);
    EXPECT_EQ(defaults_.number("key"), std::nullopt) << value;
    EXPECT_EQ(defaults_.integer("key"), std::nullopt) << value;
  }
}

TEST_P(UserDefaultsContract, TheLatestValueCountsWhateverItsType) {
  defaults_.set("key", true);
  defaults_.set("key", std::int64_t{3});
  EXPECT_EQ(defaults_.boolean("key"), std::nullopt);
  EXPECT_EQ(defaults_.integer("key"), 3);
  defaults_.set("key", "three");
  EXPECT_EQ(defaults_.integer("key"), std::nullopt);
  EXPECT_EQ(defaults_.text("key"), "three");
}

TEST_P(UserDefaultsContract, KeysAreKeptApart) {
  defaults_.set("a", std::int64_t{1});
  defaults_.set("A", std::int64_t{2});
  defaults_.set("a.b", std::int64_t{3});
  EXPECT_EQ(defaults_.integer("a"), 1);
  EXPECT_EQ(defaults_.integer("A"), 2);
  EXPECT_EQ(defaults_.integer("a.b"), 3);
}

TEST_P(UserDefaultsContract, SetsSeveralKeysAtOnce) {
  defaults_.set("kept", true);
  defaults_.set({{"x", 10.5}, {"y", std::int64_t{-20}}, {"name", std::string("w")}});
  EXPECT_EQ(defaults_.number("x"), 10.5);
  EXPECT_EQ(defaults_.integer("y"), -20);
  EXPECT_EQ(defaults_.text("name"), "w");
  EXPECT_EQ(defaults_.boolean("kept"), true);
}

}  // namespace morla::platform
