#include "platform/linux/system/FileUserDefaults.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

#include "DiagnosticLines.h"
#include "platform/fake/FakeMainLoop.h"
#include "support/TemporaryFolder.h"
#include "unit/platform/UserDefaultsContract.h"

namespace morla::linux {
namespace {

using support::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Permissions hold nothing back from root: as root, the scope runs as somebody else.
class Unprivileged {
 public:
  Unprivileged() {
    if (geteuid() == 0 && seteuid(65534) != 0) ADD_FAILURE() << "the privileges cannot be dropped";
  }
  ~Unprivileged() {
    if (getuid() == 0 && seteuid(0) != 0) ADD_FAILURE() << "the privileges cannot be taken back";
  }
  Unprivileged(Unprivileged const&) = delete;
  Unprivileged& operator=(Unprivileged const&) = delete;
};

/// No file may grow: every write fails, as on a full disk.
class FullDisk {
 public:
  FullDisk() : handler_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit const none{0, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, handler_);
  }
  FullDisk(FullDisk const&) = delete;
  FullDisk& operator=(FullDisk const&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

class FileUserDefaultsTest : public testing::Test {
 protected:
  fake::FakeMainLoop loop_;
  TemporaryFolder folder_;
  std::string const path_ = folder_ / "morla/defaults.json";

  void write(std::string const& text) const { folder_.write("morla/defaults.json", text); }
  [[nodiscard]] std::string text() const { return folder_.read("morla/defaults.json"); }
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (auto const& entry : std::filesystem::directory_iterator(folder_ / "morla")) {
      result.push_back(entry.path().filename().string());
    }
    return result;
  }
  [[nodiscard]] std::vector<std::string> brokenCopies() const {
    std::vector<std::string> result;
    for (auto const& name : names()) {
      if (name.starts_with("defaults.json.broken-")) result.push_back(folder_.read("morla/" + name));
    }
    return result;
  }
};

TEST_F(FileUserDefaultsTest, StartsWithoutAFileAndWithoutAWord) {
  DiagnosticLines lines;
  FileUserDefaults const defaults(loop_, path_);
  EXPECT_FALSE(defaults.hasValue("key"));
  EXPECT_THAT(lines.get(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "morla"));
}

TEST_F(FileUserDefaultsTest, WritesThroughAtOnceAndReadsTheSameValuesBack) {
  FileUserDefaults defaults(loop_, path_);
  defaults.set("flag", true);
  defaults.set({{"integer", std::int64_t{5}}, {"number", 5.0}, {"text", std::string("caf\xC3\xA9\n")}});
  FileUserDefaults const again(loop_, path_);
  EXPECT_EQ(again.value("flag"), platform::DefaultsValue(true));
  EXPECT_EQ(again.value("integer"), platform::DefaultsValue(std::int64_t{5}));
  EXPECT_EQ(again.value("number"), platform::DefaultsValue(5.0));
  EXPECT_EQ(again.value("text"), platform::DefaultsValue(std::string("caf\xC3\xA9\n")));
  EXPECT_THAT(names(), testing::UnorderedElementsAre("defaults.json", "defaults.json.lock"));
}

TEST_F(FileUserDefaultsTest, KeepsWhatOthersWroteMeanwhileAndSeesItAtTheNextStart) {
  FileUserDefaults first(loop_, path_);
  FileUserDefaults second(loop_, path_);
  first.set("first", std::int64_t{1});
  second.set("second", std::int64_t{2});
  first.set("first", std::int64_t{3});
  EXPECT_FALSE(first.hasValue("second"));
  FileUserDefaults const third(loop_, path_);
  EXPECT_EQ(third.integer("first"), 3);
  EXPECT_EQ(third.integer("second"), 2);
}

TEST_F(FileUserDefaultsTest, ANumberThatIsNotFiniteTakesTheKeyOutOfTheFile) {
  FileUserDefaults defaults(loop_, path_);
  defaults.set("key", 1.5);
  defaults.set("key", std::numeric_limits<double>::quiet_NaN());
  EXPECT_FALSE(FileUserDefaults(loop_, path_).hasValue("key"));
}

TEST_F(FileUserDefaultsTest, ReplacesTheFileBehindALinkAndKeepsTheLink) {
  folder_.write("elsewhere.json", "{\"kept\": 1}");
  std::filesystem::create_directory(folder_ / "morla");
  std::filesystem::create_symlink("../elsewhere.json", path_);
  FileUserDefaults(loop_, path_).set("key", true);
  EXPECT_TRUE(std::filesystem::is_symlink(path_));
  EXPECT_THAT(folder_.read("elsewhere.json"), testing::AllOf(HasSubstr("kept"), HasSubstr("key")));
}

TEST_F(FileUserDefaultsTest, AFileThatIsDamagedLaterGetsBackWhatThisRunKnows) {
  write(R"({"a": 1, "b": 2})");
  FileUserDefaults defaults(loop_, path_);
  write(R"({"a": 5, "b)");
  defaults.set("c", std::int64_t{3});
  FileUserDefaults const again(loop_, path_);
  EXPECT_EQ(again.integer("a"), 5);
  EXPECT_EQ(again.integer("b"), 2);
  EXPECT_EQ(again.integer("c"), 3);
  EXPECT_THAT(brokenCopies(), ElementsAre(R"({"a": 5, "b)"));
}

TEST_F(FileUserDefaultsTest, ForeignTypesAreAbsentToReadersAndStayInTheFile) {
  write(R"({"list": [1, {"x": null}], "object": {"y": [true]}, "nothing": null, "a": 1})");
  DiagnosticLines lines;
  FileUserDefaults defaults(loop_, path_);
  for (auto const* key : {"list", "object", "nothing"}) EXPECT_FALSE(defaults.hasValue(key)) << key;
  defaults.set("a", std::int64_t{2});
  EXPECT_THAT(lines.get(), IsEmpty());
  auto packed = text();
  std::erase_if(packed, [](char c) { return c == ' ' || c == '\n'; });
  EXPECT_EQ(packed, R"({"a":2,"list":[1,{"x":null}],"nothing":null,"object":{"y":[true]}})");
}

TEST_F(FileUserDefaultsTest, AnIntegerBeyondSixtyFourBitsIsANumber) {
  write(R"({"a": 18446744073709551615, "b": 99999999999999999999999})");
  FileUserDefaults const defaults(loop_, path_);
  EXPECT_EQ(defaults.integer("a"), std::nullopt);
  EXPECT_EQ(defaults.number("a"), 18446744073709551615.0);
  EXPECT_EQ(defaults.number("b"), 1e23);
}

TEST_F(FileUserDefaultsTest, AFileThatMayNotBeReadIsNeverReplaced) {
  write(R"({"a": 1})");
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0777));
  std::filesystem::permissions(folder_ / "morla", std::filesystem::perms(0777));
  std::filesystem::permissions(path_, std::filesystem::perms(0));
  {
    DiagnosticLines lines;
    Unprivileged const somebody;
    FileUserDefaults defaults(loop_, path_);
    defaults.set("b", true);
    EXPECT_THAT(lines.get(), ElementsAre(HasSubstr("cannot be read and is left alone"))) << "one line, not two";
    EXPECT_EQ(defaults.boolean("b"), true);
  }
  std::filesystem::permissions(path_, std::filesystem::perms(0600));
  EXPECT_EQ(text(), R"({"a": 1})");
}

TEST_F(FileUserDefaultsTest, AFolderThatMayNotBeWrittenCostsOneLineAndTheValuesHoldForThisRun) {
  write(R"({"a": 1})");
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0755));
  std::filesystem::permissions(folder_ / "morla", std::filesystem::perms(0555));
  std::filesystem::permissions(path_, std::filesystem::perms(0644));
  DiagnosticLines lines;
  FileUserDefaults defaults(loop_, path_);
  {
    Unprivileged const somebody;
    defaults.set("a", std::int64_t{2});
    defaults.set("b", std::int64_t{3});
  }
  EXPECT_EQ(lines.get().size(), 1U);
  EXPECT_EQ(defaults.integer("a"), 2);
  EXPECT_EQ(defaults.integer("b"), 3);
  EXPECT_EQ(text(), R"({"a": 1})");
  std::filesystem::permissions(folder_ / "morla", std::filesystem::perms(0755));
  defaults.set("c", std::int64_t{4});
  FileUserDefaults const again(loop_, path_);
  EXPECT_EQ(again.integer("a"), 2) << "what failed is tried again with the next write";
  EXPECT_EQ(again.integer("b"), 3);
  EXPECT_EQ(again.integer("c"), 4);
}

TEST_F(FileUserDefaultsTest, AFullDiskLeavesTheOldFile) {
  write(R"({"a": 1})");
  FileUserDefaults defaults(loop_, path_);
  DiagnosticLines lines;
  {
    // The lock file has no bytes; only the new text needs room.
    FullDisk const full;
    defaults.set("a", std::int64_t{2});
  }
  EXPECT_THAT(lines.get(), ElementsAre(HasSubstr("cannot be written")));
  EXPECT_EQ(text(), R"({"a": 1})");
  EXPECT_EQ(defaults.integer("a"), 2);
  EXPECT_THAT(names(), testing::UnorderedElementsAre("defaults.json", "defaults.json.lock"));
}

TEST_F(FileUserDefaultsTest, APlaceThatIsNoFolderIsSurvived) {
  folder_.write("morla", "a file");
  DiagnosticLines lines;
  FileUserDefaults defaults(loop_, path_);
  defaults.set("a", true);
  EXPECT_EQ(defaults.boolean("a"), true);
  EXPECT_THAT(lines.get(), testing::Not(IsEmpty()));
}

TEST_F(FileUserDefaultsTest, AFolderInThePlaceOfTheFileIsSurvivedAndLeftAlone) {
  std::filesystem::create_directories(path_ + "/inside");
  DiagnosticLines lines;
  FileUserDefaults defaults(loop_, path_);
  EXPECT_EQ(lines.get().size(), 1U);
  defaults.set("a", true);
  EXPECT_EQ(defaults.boolean("a"), true);
  EXPECT_TRUE(std::filesystem::exists(path_ + "/inside"));
}

TEST_F(FileUserDefaultsTest, APipeInThePlaceOfTheFileIsSurvivedAndLeftAlone) {
  std::filesystem::create_directory(folder_ / "morla");
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  DiagnosticLines lines;
  FileUserDefaults defaults(loop_, path_);
  defaults.set("a", true);
  EXPECT_EQ(defaults.boolean("a"), true);
  EXPECT_THAT(lines.get(), ElementsAre(HasSubstr("it is no regular file")));
  EXPECT_TRUE(std::filesystem::is_fifo(path_));
}

TEST_F(FileUserDefaultsTest, APipeInThePlaceOfTheNewFileHoldsNobodyUp) {
  std::filesystem::create_directory(folder_ / "morla");
  ASSERT_EQ(mkfifo((path_ + ".new").c_str(), 0600), 0);
  FileUserDefaults(loop_, path_).set("a", true);
  EXPECT_EQ(FileUserDefaults(loop_, path_).boolean("a"), true);
}

TEST_F(FileUserDefaultsTest, ALinkInThePlaceOfTheNewFileIsNotWrittenThrough) {
  folder_.write("other", "somebody's");
  std::filesystem::create_directory(folder_ / "morla");
  std::filesystem::create_symlink(folder_ / "other", path_ + ".new");
  FileUserDefaults(loop_, path_).set("a", true);
  EXPECT_EQ(folder_.read("other"), "somebody's");
}

/// Defaults in a folder of their own.
class DefaultsInTheirFolder final : public platform::UserDefaults {
 public:
  std::optional<platform::DefaultsValue> value(std::string_view key) const override { return defaults_.value(key); }

 protected:
  void store(std::vector<platform::DefaultsEntry> const& entries) override { defaults_.set(entries); }

 private:
  TemporaryFolder folder_;
  fake::FakeMainLoop loop_;
  FileUserDefaults defaults_{loop_, folder_ / "morla/defaults.json"};
};

}  // namespace
}  // namespace morla::linux

namespace morla::platform {

INSTANTIATE_TEST_SUITE_P(File, UserDefaultsContract, testing::Values(UserDefaultsFactory([] {
                           return std::make_unique<linux::DefaultsInTheirFolder>();
                         })));

}  // namespace morla::platform
