#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "CapturedOutput.h"
#include "DiagnosticLines.h"
#include "platform/fake/FakeMainLoop.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/system/DefaultsCommand.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Another writer, which has been stopped in the middle of its work: while this lives.
class StoppedWriter {
 public:
  explicit StoppedWriter(std::string const& path)
      : lock_(open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (flock(lock_.get(), LOCK_EX) != 0) std::abort();
  }

 private:
  FileDescriptor lock_;
};

class LockedDefaults : public testing::Test {
 protected:
  LockedDefaults() { folder_.write("morla/defaults.json", R"({"a": 1})"); }
  [[nodiscard]] std::optional<platform::DefaultsValue> stored(std::string const& key) const {
    auto const read = DefaultsFile(path_).read();
    auto const found = read.values.find(key);
    return found == read.values.end() ? std::nullopt : std::optional(found->second);
  }

  support::TemporaryFolder folder_;
  std::string const path_ = folder_ / "morla/defaults.json";
  fake::FakeMainLoop loop_;
  FileUserDefaults defaults_{loop_, path_};
  DiagnosticLines lines_;
};

TEST_F(LockedDefaults, NobodyWaitsForAWriterThatHasBeenStopped) {
  {
    StoppedWriter const other(path_);
    defaults_.set("a", std::int64_t{2});
    EXPECT_EQ(defaults_.integer("a"), 2);
    EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{1}));
  }
  loop_.advance(10ms);
  EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{2}));
  EXPECT_EQ(loop_.pendingTimers(), 0u);
  EXPECT_THAT(lines_.get(), IsEmpty());
}

TEST_F(LockedDefaults, EveryChangeIsWrittenWhenTheOtherGoesOn) {
  {
    StoppedWriter const other(path_);
    defaults_.set("a", std::int64_t{2});
    defaults_.set("b", true);
    loop_.advance(1min);
    defaults_.set("a", std::int64_t{3});
    EXPECT_EQ(loop_.pendingTimers(), 1u);
  }
  loop_.advance(1s);
  EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{3}));
  EXPECT_EQ(stored("b"), platform::DefaultsValue(true));
}

TEST_F(LockedDefaults, ALaterChangeTakesWhatWaitsWithIt) {
  {
    StoppedWriter const other(path_);
    defaults_.set("a", std::int64_t{2});
  }
  defaults_.set("b", true);
  EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{2}));
  EXPECT_EQ(loop_.pendingTimers(), 0u);
}

TEST_F(LockedDefaults, AWriterThatStaysIsToldOfOnce) {
  StoppedWriter const other(path_);
  defaults_.set("a", std::int64_t{2});
  loop_.advance(1s);
  EXPECT_THAT(lines_.get(), IsEmpty()) << "a busy one is nothing to tell";
  loop_.advance(1h);
  EXPECT_THAT(lines_.get(), ElementsAre(HasSubstr("is held by another program")));
}

TEST_F(LockedDefaults, TheEndOfTheProgramWaitsForAWriterThatGoesOn) {
  auto other = std::make_unique<StoppedWriter>(path_);
  defaults_.set("a", std::int64_t{2});
  std::thread goingOn([&other] { other.reset(); });
  defaults_.finish(1min);
  goingOn.join();
  EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{2}));
  EXPECT_THAT(lines_.get(), IsEmpty());
}

TEST_F(LockedDefaults, TheEndOfTheProgramIsNotHeldUpForLongAndTellsOfTheLoss) {
  StoppedWriter const other(path_);
  defaults_.set("a", std::int64_t{2});
  defaults_.finish(10ms);
  EXPECT_THAT(lines_.get(), ElementsAre(HasSubstr("what was changed last is lost")));
}

TEST_F(LockedDefaults, TheEndOfTheProgramWritesNothingWhenNothingWaits) {
  StoppedWriter const other(path_);
  defaults_.finish(1min);
  EXPECT_THAT(lines_.get(), IsEmpty());
}

TEST_F(LockedDefaults, TheCommandGivesUpAndSaysWhy) {
  support::EnvironmentVariable const config("XDG_CONFIG_HOME", folder_.path());
  StoppedWriter const other(path_);
  auto const ran = capture([] { return defaultsCommand({"write", "a", "integer", "2"}); });
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.errors, HasSubstr("defaults.json.lock is held by another program; nothing was changed"));
  EXPECT_EQ(stored("a"), platform::DefaultsValue(std::int64_t{1}));
}

}  // namespace
}  // namespace morla::linux
