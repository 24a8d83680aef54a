// The program `applescript` itself, started as a person starts it.
#include <gtest/gtest.h>

#include "InstalledToy.h"
#include "platform/linux/scripting/Shell.h"

namespace morla::linux {
namespace {

class Tool : public ::testing::Test {
 protected:
  /// `arguments` as the shell reads them; the test's folder is current.
  [[nodiscard]] applescript::ShellResult run(std::string const& arguments, std::string const& input = "") const {
    folder_.write("input", input);
    return runShell("cd '" + folder_.path().string() + "' && '" MORLA_TOOL_PROGRAM "' " + arguments + " < input");
  }
  void expect(std::string const& arguments, std::string const& output, std::string const& input = "") const {
    auto const result = run(arguments, input);
    EXPECT_EQ(result.output, output) << arguments;
    EXPECT_EQ(result.errorOutput, "") << arguments;
    EXPECT_EQ(result.status, 0) << arguments;
  }
  void expectFailure(int status, std::string const& arguments, std::string const& message) const {
    auto const result = run(arguments);
    EXPECT_EQ(result.output, "") << arguments;
    EXPECT_EQ(result.errorOutput, message) << arguments;
    EXPECT_EQ(result.status, status) << arguments;
  }

  scriptingbus::testing::InstalledToy toy_;
  support::TemporaryFolder folder_;
};

TEST_F(Tool, TellsAScriptWhereItsFileIs) {
  folder_.write("a.applescript", "POSIX path of (path to me)");
  expect("./a.applescript", (folder_ / "a.applescript").string() + "\n");
}

TEST_F(Tool, ReadsAndWritesFiles) {
  std::string const path = (folder_ / "notes.txt").string();
  expect("-e 'set f to open for access POSIX file \"" + path + "\" with write permission' -e 'set eof f to 0' " +
             "-e 'write \"été\" to f' -e 'close access f' -e 'read POSIX file \"" + path + "\"'",
         "été\n");
  EXPECT_EQ(folder_.read("notes.txt"), "été");
}

TEST_F(Tool, RunsLinesFilesAndStandardInput) {
  expect("-e '1 + 1'", "2\n");
  expect("-e 'set x to 20' -e 'x + 1'", "21\n");
  folder_.write("a.applescript", "\"from \" & \"a file\"\n");
  expect("a.applescript", "from a file\n");
  expect("-", "7\n", "3 + 4");
  expect("", "7\n", "3 + 4\r");
  expect("", "", "");
  folder_.write("empty", "");
  expect("empty", "");
}

TEST_F(Tool, PrintsResultsForPeopleOrForScripts) {
  expect("-e '{1, \"a\", {true}}'", "1, a, true\n");
  expect("-s h -e '{1, \"a\", {true}}'", "1, a, true\n");
  expect("-s s -e '{1, \"a\", {true}}'", "{1, \"a\", {true}}\n");
  expect("-s s -e 'missing value'", "missing value\n");
}

TEST_F(Tool, SaysWhereAnErrorIs) {
  folder_.write("bad", "set x to 1\nset y to x +\n");
  auto const compile = run("bad");
  EXPECT_EQ(compile.status, 1);
  EXPECT_TRUE(compile.errorOutput.starts_with("bad:2:")) << compile.errorOutput;
  EXPECT_TRUE(compile.errorOutput.ends_with("(-2741)\n")) << compile.errorOutput;
  auto const atRunTime = run("-e 'set x to 1' -e 'error \"oops\" number 77'");
  EXPECT_EQ(atRunTime.status, 1);
  EXPECT_EQ(atRunTime.errorOutput, "-e:2:1: error: oops (77)\n");
}

TEST_F(Tool, ChecksWithoutRunning) {
  expect("--check -e 'do shell script \"touch made\"'", "");
  expect("-e 'do shell script \"ls\"'", "input\n");
  EXPECT_EQ(run("--check -e 'set set'").status, 1);
}

TEST_F(Tool, WritesTheLogToStandardError) {
  auto const result = run("-e 'log \"one\"' -e '2'");
  EXPECT_EQ(result.output, "2\n");
  EXPECT_NE(result.errorOutput.find("one"), std::string::npos);
}

TEST_F(Tool, ExplainsItselfAndRefusesWhatItDoesNotKnow) {
  auto const help = run("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.output.starts_with("Usage: applescript ")) << help.output;
  auto const wrong = run("--nonsense");
  EXPECT_EQ(wrong.status, 2);
  EXPECT_EQ(wrong.output, "");
  EXPECT_TRUE(wrong.errorOutput.starts_with("applescript: unknown option --nonsense\n\nUsage: ")) << wrong.errorOutput;
}

TEST_F(Tool, SaysWhichFileCannotBeRead) {
  expectFailure(1, "missing", "applescript: missing: No such file or directory\n");
  expectFailure(1, "/", "applescript: /: Is a directory\n");
}

TEST_F(Tool, SpeaksWithApplications) {
  expect("-e 'tell application \"Toy Library\" to name of book 2'", "Shadow\n");
  expect("-s s -e 'tell application \"Toy Library\" to get every book'",
         "{book \"Light\", book \"Shadow\", book \"Colour, a history\"}\n");
  expectFailure(1, "-e 'tell application \"Toy Library\" to name of book 9'",
                "-e:1:35: error: Toy Library got an error: Can’t get it. (-1728)\n");
}

}  // namespace
}  // namespace morla::linux
