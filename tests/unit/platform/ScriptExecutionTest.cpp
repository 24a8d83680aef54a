#include "platform/ScriptExecution.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "base/Trace.h"
#include "platform/fake/FakePlatform.h"

namespace morla::platform {
namespace {

using namespace std::chrono_literals;

Task<> runInto(ScriptExecution& execution, std::string source, std::vector<std::string>& texts) {
  auto const reply = co_await execution.run(ScriptKind::status, std::move(source));
  texts.push_back(reply.text.value_or("no text"));
}

TEST(ScriptExecution, RunsTheScriptInTheBackgroundWithUserInitiatedQuality) {
  fake::FakePlatform fake;
  fake.scripts.answersText("RAW");
  ScriptExecution execution(fake.loop, fake.background, fake.scripts);
  std::vector<std::string> texts;
  detach(runInto(execution, "the source", texts));
  EXPECT_EQ(fake.background.lastQuality(), QualityOfService::userInitiated);
  EXPECT_TRUE(fake.scripts.sources.empty());
  fake.loop.advance(0s);
  EXPECT_EQ(fake.scripts.sources, std::vector<std::string>{"the source"});
  EXPECT_EQ(texts, std::vector<std::string>{"RAW"});
}

TEST(ScriptExecution, OverlappingRunsEachGetTheirOwnAnswer) {
  fake::FakePlatform fake;
  fake.scripts.answers([](std::string const& source) { return ScriptReply{"reply to " + source, std::nullopt}; });
  ScriptExecution execution(fake.loop, fake.background, fake.scripts);
  std::vector<std::string> texts;
  fake.background.takes(2s);
  detach(runInto(execution, "slow", texts));
  fake.background.takes(1s);
  detach(runInto(execution, "quick", texts));
  fake.loop.advance(2s);
  EXPECT_EQ(texts, (std::vector<std::string>{"reply to quick", "reply to slow"}));
}

TEST(ScriptExecution, MayGoWhileAScriptIsUnderWay) {
  fake::FakePlatform fake;
  fake.scripts.answersText("late");
  auto execution = std::make_unique<ScriptExecution>(fake.loop, fake.background, fake.scripts);
  std::vector<std::string> texts;
  fake.background.takes(1s);
  detach(runInto(*execution, "source", texts));
  execution.reset();
  fake.loop.advance(1s);
  EXPECT_EQ(texts, std::vector<std::string>{"late"});
}

TEST(ScriptExecution, TracesEachScriptWithItsReply) {
  fake::FakePlatform fake;
  std::vector<std::string> lines;
  Trace const trace(
      [&lines](std::string const& line) { lines.push_back(line); },
      [&fake] { return std::chrono::duration_cast<std::chrono::milliseconds>(fake.loop.now().sinceStart); });
  fake.scripts.answersError(-1743);
  fake.background.takes(20ms);
  ScriptExecution execution(fake.loop, fake.background, fake.scripts);
  std::vector<std::string> texts;
  detach(runInto(execution, "12345", texts));
  fake.loop.advance(20ms);
  EXPECT_EQ(
      lines,
      (std::vector<std::string>{
          R"({"t":0,"bytes":5,"kind":"status","script":1})",
          R"({"t":20,"error":{"message":"an error of the test","number":-1743},"ms":20,"script":1,"text":null})"}));
}

}  // namespace
}  // namespace morla::platform
