#include "base/Published.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "RecordedTrace.h"

namespace morla {
namespace {

enum class Mode { alert, panel };

Json toJson(Mode mode) {
  return Json(mode == Mode::alert ? "alert" : "panel");
}

TEST(Published, StartsWithItsInitialValue) {
  Published<int> const counted("Owner.counted", 4);
  EXPECT_EQ(counted.get(), 4);
  Published<std::string> const text("Owner.text");
  EXPECT_EQ(text.get(), "");
}

TEST(Published, AnnouncesTheComingValueBeforeItIsStored) {
  Published<int> value("Owner.value", 1);
  std::vector<std::pair<int, int>> seen;  // coming, still stored
  auto const observation = value.willChange([&](int coming) { seen.emplace_back(coming, value.get()); });
  value.set(2);
  value.set(3);
  EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{2, 1}, {3, 2}}));
  EXPECT_EQ(value.get(), 3);
}

TEST(Published, AnnouncesAWriteOfAnEqualValue) {
  Published<std::optional<std::string>> value("Owner.value");
  int announced = 0;
  auto const observation = value.willChange([&](auto const&) { ++announced; });
  value.set(std::nullopt);
  value.set("JPEG");
  value.set("JPEG");
  EXPECT_EQ(announced, 3);
}

TEST(Published, ReplaysNothingToANewObserver) {
  Published<int> value("Owner.value", 1);
  value.set(2);
  int announced = 0;
  auto const observation = value.willChange([&](int) { ++announced; });
  EXPECT_EQ(announced, 0);
}

TEST(Published, AnnouncesNothingAfterTheObservationEnded) {
  Published<int> value("Owner.value");
  int announced = 0;
  auto observation = value.willChange([&](int) { ++announced; });
  observation.end();
  value.set(1);
  EXPECT_EQ(announced, 0);
  EXPECT_EQ(value.get(), 1);
}

TEST(Published, EndsWithTheOuterValueWhenAnObserverWrites) {
  Published<int> value("Owner.value", 0);
  std::vector<std::string> happened;
  auto const writer = value.willChange([&](int coming) {
    happened.push_back("writer hears " + std::to_string(coming));
    if (coming != 1) return;
    value.set(2);
    happened.push_back("stored meanwhile: " + std::to_string(value.get()));
  });
  auto const other = value.willChange([&](int coming) { happened.push_back("other hears " + std::to_string(coming)); });
  value.set(1);
  EXPECT_EQ(happened, (std::vector<std::string>{"writer hears 1", "writer hears 2", "other hears 2",
                                                "stored meanwhile: 2", "other hears 1"}));
  EXPECT_EQ(value.get(), 1);
}

TEST(Published, MayBeWrittenWithItsOwnValue) {
  Published<std::string> value("Owner.value", "a text too long to be kept inside of the string object itself");
  auto const before = value.get();
  value.set(value.get());
  EXPECT_EQ(value.get(), before);
}

TEST(Published, WritesItsTraceLineAfterTheStore) {
  Published<int> value("Owner.value", 1);
  std::vector<std::string> happened;
  Trace const trace(
      [&](std::string const& line) { happened.push_back(line + " with " + std::to_string(value.get()) + " stored"); },
      [] { return std::chrono::milliseconds(5); });
  auto const observation = value.willChange([&](int) { happened.emplace_back("announced"); });
  value.set(2);
  EXPECT_EQ(happened,
            (std::vector<std::string>{"announced", R"({"t":5,"published":"Owner.value","value":2} with 2 stored)"}));
}

TEST(Published, TracesNestedWritesInTheOrderOfTheirStores) {
  RecordedTrace recorded;
  Published<int> value("Owner.value", 0);
  auto const writer = value.willChange([&](int coming) {
    if (coming == 1) value.set(2);
  });
  value.set(1);
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"published":"Owner.value","value":2})",
                                                      R"({"t":0,"published":"Owner.value","value":1})"}));
}

TEST(Published, TracesAnEnumerationByItsOwnWords) {
  RecordedTrace recorded;
  Published<Mode> mode("Owner.mode", Mode::alert);
  mode.set(Mode::panel);
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"published":"Owner.mode","value":"panel"})"}));
}

TEST(Published, TracesAnAbsentValueAsNull) {
  RecordedTrace recorded;
  Published<std::optional<std::string>> format("Owner.format");
  format.set("RAW \"14 bit\"");
  format.set(std::nullopt);
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"published":"Owner.format","value":"RAW \"14 bit\""})",
                                                      R"({"t":0,"published":"Owner.format","value":null})"}));
}

}  // namespace
}  // namespace morla
