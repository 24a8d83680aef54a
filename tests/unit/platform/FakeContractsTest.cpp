// What every main loop, every file system and every user defaults promise, asked of those in memory.
#include <gtest/gtest.h>

#include <memory>

#include "platform/fake/FakeMainLoop.h"
#include "platform/fake/FakeSystem.h"
#include "unit/platform/FilesContract.h"
#include "unit/platform/MainLoopContract.h"
#include "unit/platform/UserDefaultsContract.h"

namespace morla {
namespace {

struct FakeLoopHarness {
  MainLoop& loop() { return loop_; }
  bool runUntil(std::function<bool()> isDone) {
    // Steps shorter than any delay of a test, so that `isDone` is asked in between; ten seconds of them.
    loop_.runReady();
    for (int step = 0; step < 100'000 && !isDone(); ++step) loop_.advance(std::chrono::microseconds(100));
    return isDone();
  }
  void keepBusy(Duration time) { loop_.stall(time); }
  void endLoop() { loop_.end(); }

  fake::FakeMainLoop loop_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MainLoopContract, FakeLoopHarness);

class FoldersInMemory final : public platform::FilesWorld {
 public:
  platform::Files& files() override { return files_; }
  std::string folder() override { return kFolder; }
  void makeFolder(std::string const& path) override {
    makeFile(path);
    files_.folders[path];
  }
  void makeFile(std::string const& path) override {
    auto const slash = path.rfind('/');
    files_.folders.at(path.substr(0, slash)).push_back(path.substr(slash + 1));
  }

 private:
  static constexpr char kFolder[] = "/Users/photographe/folder";
  fake::FakeFiles files_ = [] {
    fake::FakeFiles files;
    files.folders[kFolder];
    return files;
  }();
};

}  // namespace

namespace platform {

INSTANTIATE_TEST_SUITE_P(Fake, FilesContract,
                         testing::Values(FilesWorldFactory([] { return std::make_unique<FoldersInMemory>(); })));

INSTANTIATE_TEST_SUITE_P(Fake, UserDefaultsContract, testing::Values(UserDefaultsFactory([] {
                           return std::make_unique<fake::FakeUserDefaults>();
                         })));

}  // namespace platform
}  // namespace morla
