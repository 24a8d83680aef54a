#include "camerawatch/ScriptTexts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace morla::camerawatch {
namespace {

std::filesystem::path scriptsFolder() {
  return std::filesystem::path(MORLA_SOURCE_DIR) / "scripts";
}

std::string bytesOf(std::filesystem::path const& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(ScriptTexts, EveryFileHasItsNumberOfBytes) {
  std::map<std::string, std::size_t> const expected{
      {"airdrop-cleanup-head.applescript", 423},
      {"airdrop-cleanup-tail.applescript", 35},
      {"airdrop-export-a.applescript", 2636},
      {"airdrop-export-b.applescript", 1384},
      {"airdrop-restore-head.applescript", 89},
      {"airdrop-restore-tail.applescript", 229},
      {"capture-folder-parent.applescript", 1481},
      {"capture-folder-set-head.applescript", 152},
      {"capture-folder-set-tail.applescript", 88},
      {"probe.applescript", 25},
      {"status.applescript", 1369},
  };
  std::map<std::string, std::size_t> found;
  for (auto const& entry : std::filesystem::directory_iterator(scriptsFolder())) {
    found[entry.path().filename().string()] = bytesOf(entry.path()).size();
  }
  EXPECT_EQ(found, expected);
}

TEST(ScriptTexts, TheEmbeddedTextsAreTheFilesByteForByte) {
  EXPECT_EQ(scripts::kProbe, bytesOf(scriptsFolder() / "probe.applescript"));
  EXPECT_EQ(scripts::kStatus, bytesOf(scriptsFolder() / "status.applescript"));
}

TEST(ScriptTexts, EachBeginsOnTheLineAfterItsTargetAndEndsWithoutALineFeed) {
  for (auto const text : {scripts::kProbe, scripts::kStatus}) {
    EXPECT_TRUE(text.starts_with("\n    "));
    EXPECT_TRUE(text.ends_with("end tell"));
  }
}

}  // namespace
}  // namespace morla::camerawatch
