#include "platform/linux/scripting/ScriptFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

class ScriptFilesTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string at(std::string const& name) const { return (folder_ / name).string(); }

  support::TemporaryFolder folder_;
  ScriptFiles files_;
};

TEST_F(ScriptFilesTest, ReadsTheBytesThatAreAskedFor) {
  folder_.write("a", std::string("on\0two", 6));
  EXPECT_EQ(files_.read(at("a"), 1, 3).bytes, std::string("n\0t", 3));
  EXPECT_EQ(files_.read(at("a"), 4, 100).bytes, "wo");
  EXPECT_EQ(files_.read(at("a"), 100, 1).bytes, "");
}

TEST_F(ScriptFilesTest, WritesInPlaceAndMakesWhatIsMissing) {
  EXPECT_EQ(files_.write(at("new"), 0, "abcdef"), 0);
  EXPECT_EQ(files_.write(at("new"), 2, "XY"), 0);
  EXPECT_EQ(folder_.read("new"), "abXYef");
  EXPECT_EQ(files_.resize(at("new"), 3), 0);
  EXPECT_EQ(folder_.read("new"), "abX");
  EXPECT_EQ(files_.write(at("new"), 5, "!"), 0);
  EXPECT_EQ(folder_.read("new"), std::string("abX\0\0!", 6));
}

TEST_F(ScriptFilesTest, SaysWhyItCannot) {
  EXPECT_EQ(files_.read(at("none"), 0, 1).error, -43);
  EXPECT_EQ(files_.write(at("no folder/x"), 0, "x"), -43);
  EXPECT_EQ(files_.read(folder_.path().string(), 0, 1).error, -43);
  EXPECT_EQ(files_.read(at(std::string(300, 'x')), 0, 1).error, -37);
}

TEST_F(ScriptFilesTest, WaitsForNoPipe) {
  ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
  EXPECT_NE(files_.read(at("pipe"), 0, 1).error, 0);
  EXPECT_NE(files_.write(at("pipe"), 0, "x"), 0);
}

TEST_F(ScriptFilesTest, TellsFoldersFromFiles) {
  folder_.write("sub/a", "12345");
  auto const file = files_.information(at("sub/a"));
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->isFolder);
  EXPECT_EQ(file->size, 5);
  auto const folder = files_.information(at("sub"));
  ASSERT_TRUE(folder);
  EXPECT_TRUE(folder->isFolder);
  EXPECT_FALSE(files_.information(at("none")));
}

TEST_F(ScriptFilesTest, ListsTheNamesInAFolder) {
  folder_.write("b", "");
  folder_.write(".a", "");
  auto names = files_.namesIn(folder_.path().string());
  ASSERT_TRUE(names);
  std::ranges::sort(*names);
  EXPECT_EQ(*names, (std::vector<std::string>{".a", "b"}));
  EXPECT_FALSE(files_.namesIn(at("b")));
}

}  // namespace
}  // namespace morla::linux
