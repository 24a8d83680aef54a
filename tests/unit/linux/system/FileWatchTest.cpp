#include "platform/linux/system/FileWatch.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "QtTestLoop.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

class FileWatchTest : public testing::Test {
 protected:
  [[nodiscard]] std::string path() const { return folder_ / "privacy/permissions.json"; }
  void replace(std::string const& text) {
    folder_.write("privacy/permissions.json.new", text);
    std::filesystem::rename(path() + ".new", path());
  }
  [[nodiscard]] std::string text() const { return folder_.read("privacy/permissions.json"); }
  Subscription watch() {
    return watchFile(path(), [this] { seen_ = text(); });
  }
  [[nodiscard]] bool sees(std::string const& text) {
    return loop_.runUntil([&] { return seen_ == text; });
  }

  QtTestLoop loop_;
  support::TemporaryFolder folder_;
  std::string seen_ = "nothing";
};

TEST_F(FileWatchTest, TellsOfAFileThatComesIntoAFolderThatWasNotThere) {
  auto const watching = watch();
  replace("first");
  EXPECT_TRUE(sees("first"));
}

TEST_F(FileWatchTest, TellsOfEveryReplacement) {
  replace("first");
  auto const watching = watch();
  for (auto const* next : {"second", "third", "fourth"}) {
    replace(next);
    EXPECT_TRUE(sees(next));
  }
}

TEST_F(FileWatchTest, TellsOfAChangeInPlaceAlsoAfterAReplacement) {
  replace("first");
  auto const watching = watch();
  replace("second");
  ASSERT_TRUE(sees("second"));
  folder_.write("privacy/permissions.json", "changed in place");
  EXPECT_TRUE(sees("changed in place"));
}

TEST_F(FileWatchTest, TellsOfTheEndOfTheFile) {
  replace("first");
  auto const watching = watch();
  std::filesystem::remove(path());
  EXPECT_TRUE(sees(""));
}

TEST_F(FileWatchTest, CanBeEndedFromWithinItsCallAndTellsNothingAfterwards) {
  replace("first");
  Subscription watching;
  int calls = 0;
  watching = watchFile(path(), [&] {
    ++calls;
    watching.end();
  });
  replace("second");
  EXPECT_TRUE(loop_.runUntil([&] { return calls > 0; }));
  replace("third");
  // Another watch of the same sees it, so the ended one would have.
  auto const other = watch();
  replace("fourth");
  EXPECT_TRUE(sees("fourth"));
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace morla::linux
