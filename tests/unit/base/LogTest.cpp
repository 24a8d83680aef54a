#include "base/Log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "RecordedTrace.h"

namespace morla {
namespace {

/// Standard output goes into a pipe while this object lives. What is not flushed does not arrive.
class PipedOutput {
 public:
  PipedOutput() {
    std::fflush(stdout);
    saved_ = ::dup(STDOUT_FILENO);
    EXPECT_EQ(::pipe2(pipe_.data(), O_NONBLOCK | O_CLOEXEC), 0);
    EXPECT_EQ(::dup2(pipe_[1], STDOUT_FILENO), STDOUT_FILENO);
  }
  ~PipedOutput() {
    std::fflush(stdout);
    ::dup2(saved_, STDOUT_FILENO);
    for (int const descriptor : {saved_, pipe_[0], pipe_[1]}) ::close(descriptor);
  }
  PipedOutput(PipedOutput const&) = delete;
  PipedOutput& operator=(PipedOutput const&) = delete;

  /// What has arrived and was not taken yet.
  std::string take() {
    std::string text;
    std::array<char, 256> buffer{};
    for (;;) {
      auto const got = ::read(pipe_[0], buffer.data(), buffer.size());
      if (got <= 0) return text;
      text.append(buffer.data(), static_cast<std::size_t>(got));
    }
  }

 private:
  int saved_ = -1;
  std::array<int, 2> pipe_{-1, -1};
};

/// The output of `write`, taken before standard output is closed or flushed by anybody else.
template <typename Write>
std::string outputOf(Write const& write) {
  PipedOutput output;
  write();
  return output.take();
}

TEST(Log, PrefixesOurOwnLinesWithTheirComponent) {
  EXPECT_EQ(outputOf([] { log("mirror", "stream ended"); }), "[mirror] stream ended\n");
}

TEST(Log, StaysOnOneLineWhateverTheForeignText) {
  EXPECT_EQ(outputOf([] { log("script", "a\nb\rc\td\x1B[31m\x7F é 東"); }), "[script] a\\nb\\rc\\td?[31m? é 東\n");
  EXPECT_EQ(outputOf([] { log("script", std::string_view("a\0b", 3)); }), "[script] a?b\n");
}

TEST(Log, WritesAFixedLineWordForWord) {
  EXPECT_EQ(outputOf([] { logVerbatim("fixed words: a\nb\t\"c\""); }), "fixed words: a\nb\t\"c\"\n");
  EXPECT_EQ(outputOf([] { logVerbatim(""); }), "\n");
}

TEST(Log, FlushesEachLineIntoAPipe) {
  std::string first;
  std::string second;
  {
    PipedOutput output;
    log("a", "one");
    first = output.take();
    logVerbatim("two");
    second = output.take();
  }
  EXPECT_EQ(first, "[a] one\n");
  EXPECT_EQ(second, "two\n");
}

TEST(Log, TellsTheTraceEachLineAsItWasWritten) {
  RecordedTrace recorded;
  auto const written = outputOf([] {
    log("script", "a\nb");
    logVerbatim("fixed \"words\"");
  });
  EXPECT_EQ(written, "[script] a\\nb\nfixed \"words\"\n");
  EXPECT_EQ(recorded.lines,
            (std::vector<std::string>{R"({"t":0,"log":"[script] a\\nb"})", R"({"t":0,"log":"fixed \"words\""})"}));
}

}  // namespace
}  // namespace morla
