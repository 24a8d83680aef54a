#include "platform/linux/scripting/Shell.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "support/EnvironmentVariable.h"

namespace morla::linux {
namespace {

TEST(Shell, GivesStatusAndBothOutputsVerbatim) {
  auto const result = runShell("printf 'a\\n\\nb\\000c\\n\\n'; printf 'oops' >&2; exit 3");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, std::string("a\n\nb\0c\n\n", 8));
  EXPECT_EQ(result.errorOutput, "oops");
}

TEST(Shell, HasTheSystemsPathAndOurOwnEnvironmentOtherwise) {
  support::EnvironmentVariable const path("PATH", "/somewhere/else");
  support::EnvironmentVariable const own("MORLA_TEST_VARIABLE", "kept");
  EXPECT_EQ(runShell("echo $PATH $MORLA_TEST_VARIABLE").output, "/usr/bin:/bin:/usr/sbin:/sbin kept\n");
}

TEST(Shell, HasNothingToRead) {
  EXPECT_EQ(runShell("cat; echo end").output, "end\n");
}

TEST(Shell, TakesMuchOutputOnBothPipesInAnyOrder) {
  // Far more than a pipe holds: each command would wait for ever if only the other pipe were read.
  constexpr std::size_t kBytes = 1'000'000;
  for (char const* const command : {"head -c 1000000 /dev/zero >&2; head -c 1000000 /dev/zero",
                                    "head -c 1000000 /dev/zero; head -c 1000000 /dev/zero >&2"}) {
    auto const result = runShell(command);
    EXPECT_EQ(result.output.size(), kBytes) << command;
    EXPECT_EQ(result.errorOutput.size(), kBytes) << command;
  }
}

TEST(Shell, TellsTheSignalThatEndedACommand) {
  EXPECT_EQ(runShell("kill -TERM $$").status, 128 + SIGTERM);
}

TEST(Shell, LetsABrokenPipeEndACommandThoughWeIgnoreIt) {
  auto const old = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_EQ(runShell("(sh -c 'kill -PIPE $$'; echo $? >&2)").errorOutput, "141\n");
  std::signal(SIGPIPE, old);
}

TEST(Shell, RefusesACommandThatItCannotPass) {
  auto const result = runShell(std::string("echo a\0b", 8));
  EXPECT_EQ(result.status, 127);
  EXPECT_EQ(result.errorOutput, "The command holds a null character.");
  auto const tooLong = runShell("echo " + std::string(4'000'000, 'x'));
  EXPECT_EQ(tooLong.status, 127);
  EXPECT_EQ(tooLong.errorOutput, "Argument list too long");
}

TEST(Shell, RunsManyCommandsAtOnce) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 16; ++i) {
    threads.emplace_back([i] {
      std::string const text = std::to_string(i);
      EXPECT_EQ(runShell("echo " + text + "; exit " + text).output, text + "\n");
    });
  }
  for (auto& thread : threads) thread.join();
}

}  // namespace
}  // namespace morla::linux
