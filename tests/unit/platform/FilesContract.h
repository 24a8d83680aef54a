#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/Files.h"

/// What every Files does. A test program includes this once and instantiates the suite with its own world.
namespace morla::platform {

/// A file system that a test can fill.
class FilesWorld {
 public:
  virtual ~FilesWorld() = default;
  [[nodiscard]] virtual Files& files() = 0;
  /// An existing empty folder, absolute.
  [[nodiscard]] virtual std::string folder() = 0;
  virtual void makeFolder(std::string const& path) = 0;
  virtual void makeFile(std::string const& path) = 0;
};
using FilesWorldFactory = std::function<std::unique_ptr<FilesWorld>()>;

class FilesContract : public testing::TestWithParam<FilesWorldFactory> {
 protected:
  std::unique_ptr<FilesWorld> world_ = GetParam()();
  Files& files_ = world_->files();
};

TEST_P(FilesContract, TheHomeFolderIsAbsoluteAndEndsInNoSlash) {
  auto const home = files_.homeFolder();
  ASSERT_FALSE(home.empty());
  EXPECT_EQ(home.front(), '/');
  EXPECT_TRUE(home == "/" || home.back() != '/') << home;
}

TEST_P(FilesContract, ListsFilesAndFoldersButNothingHiddenAndNothingDeeper) {
  auto const folder = world_->folder();
  world_->makeFolder(folder + "/Capture One.app");
  world_->makeFile(folder + "/Capture One.app/inside");
  world_->makeFile(folder + "/caf\xC3\xA9.txt");
  world_->makeFile(folder + "/.hidden");
  auto const entries = files_.visibleEntries(folder);
  ASSERT_TRUE(entries.has_value());
  EXPECT_THAT(*entries, testing::UnorderedElementsAre("Capture One.app", "caf\xC3\xA9.txt"));
}

TEST_P(FilesContract, AnEmptyFolderHasNoEntries) {
  auto const entries = files_.visibleEntries(world_->folder());
  ASSERT_TRUE(entries.has_value());
  EXPECT_TRUE(entries->empty());
}

TEST_P(FilesContract, WhatCannotBeListedGivesNothing) {
  auto const folder = world_->folder();
  world_->makeFile(folder + "/file");
  EXPECT_EQ(files_.visibleEntries(folder + "/absent"), std::nullopt);
  EXPECT_EQ(files_.visibleEntries(folder + "/file"), std::nullopt);
}

}  // namespace morla::platform
