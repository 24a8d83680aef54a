#include "base/Trace.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "RecordedTrace.h"

namespace morla {
namespace {

TEST(Trace, IsActiveFromItsStartToItsEnd) {
  EXPECT_EQ(Trace::active(), nullptr);
  {
    RecordedTrace recorded;
    EXPECT_EQ(Trace::active(), &recorded.trace);
  }
  EXPECT_EQ(Trace::active(), nullptr);
}

TEST(Trace, LeavesTheOneThatFollowedItActive) {
  std::optional<RecordedTrace> first(std::in_place);
  RecordedTrace second;
  EXPECT_EQ(Trace::active(), &second.trace);
  first.reset();
  EXPECT_EQ(Trace::active(), &second.trace);
}

TEST(Trace, BeginsEachLineWithItsTimeInMilliseconds) {
  RecordedTrace recorded;
  recorded.trace.line({{"b", Json(1)}, {"a", Json("x\n\"")}});
  recorded.now = std::chrono::milliseconds(61234);
  recorded.trace.line({});
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"a":"x\n\"","b":1})", R"({"t":61234})"}));
}

TEST(Trace, TellsAPublishedValue) {
  RecordedTrace recorded;
  recorded.trace.published("Monitor.format", Json("RAW"));
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"published":"Monitor.format","value":"RAW"})"}));
}

TEST(Trace, TellsThatTheProgramIsReady) {
  RecordedTrace recorded;
  recorded.trace.ready();
  EXPECT_EQ(recorded.lines, (std::vector<std::string>{R"({"t":0,"ready":true})"}));
}

}  // namespace
}  // namespace morla
