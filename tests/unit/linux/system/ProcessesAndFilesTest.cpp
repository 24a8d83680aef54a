#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <limits>

#include "platform/linux/system/LinuxOwnBundle.h"
#include "platform/linux/system/Processes.h"
#include "platform/linux/system/StdFiles.h"
#include "platform/linux/system/XdgFolders.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"
#include "unit/platform/FilesContract.h"

namespace morla::linux {
namespace {

using support::EnvironmentVariable;
using support::TemporaryFolder;

constexpr auto kUnknown = std::numeric_limits<std::uint64_t>::max();

class FolderOnDisk final : public platform::FilesWorld {
 public:
  platform::Files& files() override { return files_; }
  std::string folder() override { return folder_.path(); }
  void makeFolder(std::string const& path) override { std::filesystem::create_directory(path); }
  void makeFile(std::string const& path) override { std::ofstream(path).put('x'); }

 private:
  TemporaryFolder folder_;
  StdFiles files_;
};

TEST(Processes, TheStartTimeIsFoundBehindAnyProgramName) {
  std::string const rest = " S 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 4711 20 21\n";
  EXPECT_EQ(startTimeInStat("12 (cat)" + rest), 4711U);
  EXPECT_EQ(startTimeInStat("12 (a) S 1 (b c)" + rest), 4711U);
  EXPECT_EQ(startTimeInStat("12 (a\nb" + rest), kUnknown);
  EXPECT_EQ(startTimeInStat("12 (cat) S 1"), kUnknown);
  EXPECT_EQ(startTimeInStat(""), kUnknown);
}

TEST(Processes, WhatDoesNotRunComesLast) {
  EXPECT_LT(processStartTime(getpid()), kUnknown);
  EXPECT_LE(processStartTime(getppid()), processStartTime(getpid()));
  EXPECT_EQ(processStartTime(0), kUnknown);
  EXPECT_EQ(processStartTime(-1), kUnknown);
  EXPECT_EQ(processStartTime(std::numeric_limits<std::int32_t>::max()), kUnknown);
}

TEST(XdgFolders, FollowTheEnvironmentAndIgnoreRelativePaths) {
  EnvironmentVariable const home("HOME", "/home/someone/");
  {
    EnvironmentVariable const config("XDG_CONFIG_HOME", "");
    EnvironmentVariable const data("XDG_DATA_HOME", "relative");
    EnvironmentVariable const dataDirs("XDG_DATA_DIRS", "");
    EXPECT_EQ(homeFolder(), "/home/someone");
    EXPECT_EQ(configHome(), "/home/someone/.config");
    EXPECT_EQ(dataHome(), "/home/someone/.local/share");
    EXPECT_EQ(dataFolders(),
              (std::vector<std::string>{"/home/someone/.local/share", "/usr/local/share", "/usr/share"}));
  }
  EnvironmentVariable const config("XDG_CONFIG_HOME", "/c");
  EnvironmentVariable const configDirs("XDG_CONFIG_DIRS", "/a/:relative::/b");
  EXPECT_EQ(configFolders(), (std::vector<std::string>{"/c", "/a", "/b"}));
}

TEST(LinuxOwnBundle, HasTheIdentifierOfEverySystemAndTheBuildsVersion) {
  LinuxOwnBundle const bundle;
  EXPECT_EQ(bundle.identifier(), "app.morla.MORLA");
  EXPECT_EQ(bundle.shortVersion(), MORLA_EXPECTED_VERSION);
}

}  // namespace
}  // namespace morla::linux

namespace morla::platform {

INSTANTIATE_TEST_SUITE_P(StdFiles, FilesContract,
                         testing::Values(FilesWorldFactory([] { return std::make_unique<linux::FolderOnDisk>(); })));

}  // namespace morla::platform
