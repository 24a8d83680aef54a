#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/fake/FakeMainLoop.h"
#include "platform/linux/system/DefaultsFile.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::TemporaryFolder;

/// No process holds the lock for longer than a write takes.
constexpr std::chrono::minutes kPatience{1};

/// A child process that writes n = 1, 2, 3, ... and tells of each one that is written.
class WritingChild {
 public:
  explicit WritingChild(std::string const& path, std::int64_t from) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) std::abort();
    process_ = fork();
    if (process_ == 0) {
      for (std::int64_t n = from;; ++n) {
        // Long, so that half a file could not be taken for a whole one.
        std::string const text(static_cast<std::size_t>(2000 + n % 7), static_cast<char>('a' + n % 26));
        auto const change = DefaultsFile(path).change({{"n", n}, {"text", text}}, kPatience);
        if (change != DefaultsFile::Change{} || write(ends[1], "x", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
    told_ = ends[0];
  }
  ~WritingChild() { close(told_); }
  WritingChild(WritingChild const&) = delete;
  WritingChild& operator=(WritingChild const&) = delete;

  void waitForWrites(int count) const {
    char byte = 0;
    for (int i = 0; i < count; ++i) ASSERT_EQ(read(told_, &byte, 1), 1);
  }
  /// How many more writes were told of before the end.
  std::int64_t endAtOnce() const {
    kill(process_, SIGKILL);
    int status = 0;
    waitpid(process_, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    std::int64_t count = 0;
    for (char byte = 0; read(told_, &byte, 1) == 1;) ++count;
    return count;
  }

 private:
  pid_t process_ = -1;
  int told_ = -1;
};

TEST(DefaultsOfSeveralProcesses, AKillAtAnyMomentLeavesTheOldOrTheNewValue) {
  TemporaryFolder const folder;
  auto const path = folder / "morla/defaults.json";
  std::mt19937 random(20240917);
  std::int64_t n = 0;
  DefaultsFile const file(path);
  ASSERT_EQ(file.change({{"other", std::string("kept")}}, kPatience), DefaultsFile::Change{});
  for (int round = 0; round < 500; ++round) {
    WritingChild const child(path, n + 1);
    int const writes = std::uniform_int_distribution(1, 5)(random);
    child.waitForWrites(writes);
    // The next write is under way; spend a random part of it.
    for (int i = std::uniform_int_distribution(0, 20000)(random); i > 0; --i) asm volatile("");
    std::int64_t const written = n + writes + child.endAtOnce();
    auto const read = file.read();
    ASSERT_EQ(read.problem, "") << "round " << round;
    ASSERT_EQ(read.values.at("other"), platform::DefaultsValue(std::string("kept")));
    n = std::get<std::int64_t>(read.values.at("n"));
    ASSERT_TRUE(n == written || n == written + 1) << n << " after " << written;
    auto const& text = std::get<std::string>(read.values.at("text"));
    ASSERT_EQ(text, std::string(static_cast<std::size_t>(2000 + n % 7), static_cast<char>('a' + n % 26)));
  }
}

TEST(DefaultsOfSeveralProcesses, TwoProcessesThatWriteDifferentKeysLoseNothing) {
  TemporaryFolder const folder;
  auto const path = folder / "morla/defaults.json";
  constexpr int kKeys = 150;
  std::vector<pid_t> children;
  for (std::string const name : {"left", "right"}) {
    pid_t const child = fork();
    if (child == 0) {
      fake::FakeMainLoop loop;
      FileUserDefaults defaults(loop, path);
      for (int i = 0; i < kKeys; ++i) defaults.set(name + std::to_string(i), std::int64_t{i});
      defaults.finish(kPatience);
      _exit(0);
    }
    children.push_back(child);
  }
  for (auto const child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  fake::FakeMainLoop loop;
  FileUserDefaults const defaults(loop, path);
  for (int i = 0; i < kKeys; ++i) {
    EXPECT_EQ(defaults.integer("left" + std::to_string(i)), i);
    EXPECT_EQ(defaults.integer("right" + std::to_string(i)), i);
  }
}

}  // namespace
}  // namespace morla::linux
