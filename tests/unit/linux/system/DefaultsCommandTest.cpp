#include "platform/linux/system/DefaultsCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CapturedOutput.h"
#include "platform/fake/FakeMainLoop.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::EnvironmentVariable;
using support::TemporaryFolder;
using testing::HasSubstr;

class DefaultsCommandTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  EnvironmentVariable config_{"XDG_CONFIG_HOME", folder_.path()};
  EnvironmentVariable display_{"DISPLAY", ""};
  EnvironmentVariable bus_{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"};

  static Captured run(std::vector<std::string> const& arguments) {
    return capture([&] { return defaultsCommand(arguments); });
  }
};

TEST_F(DefaultsCommandTest, WritesReadsAndDeletesEveryType) {
  struct Row {
    char const* type;
    char const* argument;
    char const* shown;
  };
  for (auto const& [type, argument, shown] :
       {Row{"boolean", "true", "true"}, Row{"boolean", "false", "false"}, Row{"integer", "-5", "-5"},
        Row{"integer", "9223372036854775807", "9223372036854775807"}, Row{"number", "2.5", "2.5"},
        Row{"number", "5", "5"}, Row{"number", "1e300", "1e+300"}, Row{"text", "", ""}, Row{"text", "true", "true"},
        Row{"text", "caf\xC3\xA9 au lait", "caf\xC3\xA9 au lait"}}) {
    EXPECT_EQ(run({"write", "key", type, argument}), (Captured{0, "", ""})) << argument;
    EXPECT_EQ(run({"read", "key"}), (Captured{0, std::string(shown) + "\n", ""})) << argument;
    EXPECT_EQ(run({"read"}), (Captured{0, "key " + std::string(type) + " " + shown + "\n", ""})) << argument;
  }
  EXPECT_EQ(run({"delete", "key"}), (Captured{0, "", ""}));
  EXPECT_EQ(run({"read"}), (Captured{0, "", ""}));
}

TEST_F(DefaultsCommandTest, ListsTheKeysInOrder) {
  run({"write", "b", "integer", "2"});
  run({"write", "a", "number", "1.5"});
  run({"write", "C", "text", "x"});
  EXPECT_EQ(run({"read"}).output, "C text x\na number 1.5\nb integer 2\n");
}

TEST_F(DefaultsCommandTest, AValueStaysOneLine) {
  run({"write", "key", "text", "one\ntwo\\n\ttab\x01"});
  EXPECT_EQ(run({"read"}).output, "key text one\\ntwo\\\\n\\ttab\\u0001\n");
  fake::FakeMainLoop loop;
  EXPECT_EQ(FileUserDefaults(loop).text("key"), "one\ntwo\\n\ttab\x01");
}

TEST_F(DefaultsCommandTest, AnAbsentKeyIsAFailure) {
  for (auto const* verb : {"read", "delete"}) {
    auto const result = run({verb, "key"});
    EXPECT_EQ(result.status, 1) << verb;
    EXPECT_EQ(result.output, "") << verb;
    EXPECT_THAT(result.errors, HasSubstr("no value under 'key'")) << verb;
  }
}

TEST_F(DefaultsCommandTest, ABadValueChangesNothingAndIsExplained) {
  struct Row {
    char const* type;
    char const* value;
    char const* explanation;
  };
  run({"write", "key", "integer", "1"});
  for (auto const& [type, value, explanation] :
       {Row{"boolean", "yes", "true or false"}, Row{"boolean", "TRUE", "true or false"},
        Row{"boolean", "1", "true or false"}, Row{"integer", "1.5", "whole number"}, Row{"integer", "", "whole number"},
        Row{"integer", "9223372036854775808", "whole number"}, Row{"integer", "5 ", "whole number"},
        Row{"number", "inf", "finite"}, Row{"number", "nan", "finite"}, Row{"number", "1e999", "finite"},
        Row{"number", "1,5", "finite"}, Row{"text", "\xFF", "UTF-8"}, Row{"string", "a", "unknown type"}}) {
    auto const result = run({"write", "key", type, value});
    EXPECT_EQ(result.status, 2) << type << ' ' << value;
    EXPECT_THAT(result.errors, HasSubstr(explanation)) << type << ' ' << value;
    EXPECT_EQ(run({"read"}).output, "key integer 1\n");
  }
}

TEST_F(DefaultsCommandTest, WrongUseIsExplained) {
  for (auto const& arguments : std::vector<std::vector<std::string>>{{},
                                                                     {"list"},
                                                                     {"read", "a", "b"},
                                                                     {"write"},
                                                                     {"write", "a", "text"},
                                                                     {"write", "a", "text", "b", "c"},
                                                                     {"delete"},
                                                                     {"delete", "a", "b"}}) {
    auto const result = run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("morla defaults write KEY"));
  }
}

TEST_F(DefaultsCommandTest, ARunningProgramAndTheCommandLoseNothingOfEachOther) {
  fake::FakeMainLoop loop;
  FileUserDefaults running(loop);
  running.set("a", std::int64_t{1});
  run({"write", "b", "integer", "2"});
  running.set("c", std::int64_t{3});
  EXPECT_FALSE(running.hasValue("b"));
  EXPECT_EQ(run({"read"}).output, "a integer 1\nb integer 2\nc integer 3\n");
}

TEST_F(DefaultsCommandTest, ADamagedFileIsReadAsFarAsItGoesAndComplainedAbout) {
  folder_.write("morla/defaults.json", R"({"a": 1, "b)");
  auto const result = run({"read"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "a integer 1\n");
  EXPECT_THAT(result.errors, HasSubstr("damaged"));
  EXPECT_EQ(run({"read", "a"}).status, 0);
}

}  // namespace
}  // namespace morla::linux
