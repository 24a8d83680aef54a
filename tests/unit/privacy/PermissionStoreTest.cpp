#include "privacy/PermissionStore.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace morla::privacy {
namespace {

using support::EnvironmentVariable;
using support::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;
using Service = PermissionQuestion::Service;

constexpr char kClient[] = "app.morla.MORLA";
constexpr char kTarget[] = "com.example.toy";

PermissionQuestion const kAutomation{Service::automation, kClient, kTarget};

/// Files get no longer than this while it lives, as on a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : previousHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &previous_);
    rlimit const small{bytes, previous_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FullDisk(FullDisk const&) = delete;
  FullDisk& operator=(FullDisk const&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &previous_);
    (void)std::signal(SIGXFSZ, previousHandler_);
  }

 private:
  rlimit previous_{};
  void (*previousHandler_)(int);
};

class Permissions : public ::testing::Test {
 protected:
  void write(std::string const& text) const { folder_.write("privacy/permissions.json", text); }
  [[nodiscard]] std::string text() const { return folder_.read("privacy/permissions.json"); }
  void allow(PermissionQuestion const& question) const {
    EXPECT_EQ(store_.set(question, Permission::allow), std::nullopt);
  }
  /// What lies beside the file, without the lock.
  [[nodiscard]] std::vector<std::string> others() const {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder_ / "privacy")) {
      auto const name = entry.path().filename().string();
      if (name != "permissions.json" && name != "permissions.json.lock") names.push_back(name);
    }
    return names;
  }

  TemporaryFolder folder_;
  PermissionStore store_{folder_.path() / "privacy/permissions.json"};
};

TEST_F(Permissions, LieInTheUsersDataFolder) {
  EnvironmentVariable const home("HOME", "/home/someone");
  {
    EnvironmentVariable const dataHome("XDG_DATA_HOME", "/data");
    EXPECT_EQ(PermissionStore::ofUser().path(), "/data/privacy/permissions.json");
  }
  EnvironmentVariable const dataHome("XDG_DATA_HOME", "");
  EXPECT_EQ(PermissionStore::ofUser().path(), "/home/someone/.local/share/privacy/permissions.json");
}

TEST_F(Permissions, AreUndecidedUntilTheStoreSaysOtherwise) {
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided) << "there is no file";
  struct Row {
    char const* text;
    Permission permission;
  };
  Row const rows[] = {
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"allow"}}})", Permission::allow},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"deny"}}})", Permission::deny},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"undecided"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":"perhaps"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.toy":true}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":{"com.example.other":"allow"}}})", Permission::undecided},
      {R"({"automation":{"someone.else":{"com.example.toy":"allow"}}})", Permission::undecided},
      {R"({"automation":{"app.morla.MORLA":"allow"}})", Permission::undecided},
      {R"({"automation":["allow"]})", Permission::undecided},
      {R"(["allow"])", Permission::undecided},
      {R"({"automation":)", Permission::undecided},
      {"", Permission::undecided},
      {"\xff\xfe", Permission::undecided},
  };
  for (Row const& row : rows) {
    write(row.text);
    EXPECT_EQ(store_.get(kAutomation), row.permission) << row.text;
  }
}

TEST_F(Permissions, OfTheOtherServicesHaveNoTarget) {
  write(R"({"screenRecording":{"app.morla.MORLA":"allow"},"accessibility":{"app.morla.MORLA":"deny"}})");
  EXPECT_EQ(store_.get({Service::screenRecording, kClient, {}}), Permission::allow);
  EXPECT_EQ(store_.get({Service::accessibility, kClient, {}}), Permission::deny);
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Permissions, AreKeptBesideEachOther) {
  EXPECT_EQ(store_.set(kAutomation, Permission::allow), std::nullopt) << "the folder is made";
  EXPECT_EQ(store_.set({Service::automation, kClient, "com.example.other"}, Permission::deny), std::nullopt);
  EXPECT_EQ(store_.set({Service::screenRecording, kClient, {}}, Permission::deny), std::nullopt);
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
  EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.other"}), Permission::deny);
  EXPECT_EQ(store_.get({Service::screenRecording, kClient, {}}), Permission::deny);
  EXPECT_EQ(store_.set(kAutomation, Permission::undecided), std::nullopt);
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Permissions, KeepWhatTheyDoNotKnow) {
  write(R"({"camera":{"x":1},"automation":{"app.morla.MORLA":{"com.example.other":"allow"}}})");
  EXPECT_EQ(store_.set(kAutomation, Permission::deny), std::nullopt);
  EXPECT_NE(text().find("\"camera\""), std::string::npos);
  EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.other"}), Permission::allow);
}

TEST_F(Permissions, AreLostByNobodyWhenSeveralWriteAtOnce) {
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 8; ++writer) {
    writers.emplace_back([this, writer] {
      for (int i = 0; i < 10; ++i) {
        std::string const target = "com.example.t" + std::to_string(writer * 10 + i);
        EXPECT_EQ(PermissionStore(store_.path()).set({Service::automation, kClient, target}, Permission::allow),
                  std::nullopt);
      }
    });
  }
  for (auto& writer : writers) writer.join();
  for (int i = 0; i < 80; ++i) {
    EXPECT_EQ(store_.get({Service::automation, kClient, "com.example.t" + std::to_string(i)}), Permission::allow) << i;
  }
}

TEST_F(Permissions, AreSeenWholeWhileTheyAreWritten) {
  allow(kAutomation);
  std::thread writer([this] {
    for (int i = 0; i < 300; ++i) {
      auto const permission = i % 2 == 0 ? Permission::deny : Permission::allow;
      EXPECT_EQ(store_.set({Service::screenRecording, kClient, {}}, permission), std::nullopt);
    }
  });
  for (int i = 0; i < 3000; ++i) ASSERT_EQ(store_.get(kAutomation), Permission::allow) << "read " << i;
  writer.join();
}

TEST_F(Permissions, AreListed) {
  write(R"({"automation":{"a":{"x":"allow","y":"undecided"},"b":{"x":"deny"}},"screenRecording":{"a":"deny"},)"
        R"("accessibility":{"a":"perhaps"},"camera":{"a":"allow"}})");
  auto const contents = store_.read();
  EXPECT_EQ(contents.problem, "");
  std::vector<std::pair<PermissionQuestion, Permission>> found;
  for (auto const& [question, permission] : contents.decisions) found.emplace_back(question, permission);
  using Question = PermissionQuestion;
  EXPECT_THAT(found, UnorderedElementsAre(std::pair(Question{Service::automation, "a", "x"}, Permission::allow),
                                          std::pair(Question{Service::automation, "a", "y"}, Permission::undecided),
                                          std::pair(Question{Service::automation, "b", "x"}, Permission::deny),
                                          std::pair(Question{Service::screenRecording, "a", ""}, Permission::deny),
                                          std::pair(Question{Service::accessibility, "a", ""}, Permission::undecided)));
}

TEST_F(Permissions, AreNoneWithoutAFileAndThatIsNoProblem) {
  auto const contents = store_.read();
  EXPECT_TRUE(contents.decisions.empty());
  EXPECT_EQ(contents.problem, "");
}

TEST_F(Permissions, OfADamagedFileAreKeptBesideTheNewOne) {
  char const* const rows[] = {
      R"({"automation":{"app.morla.MORLA":{"com.example.other":"allow"})",
      "",
      R"(["allow"])",
      R"({"automation":["com.example.other"]})",
      R"({"automation":{"app.morla.MORLA":"allow"}})",
      R"({"screenRecording":"allow"})",
  };
  for (auto const* damaged : rows) {
    SCOPED_TRACE(damaged);
    TemporaryFolder const folder;
    folder.write("permissions.json", damaged);
    PermissionStore const store(folder / "permissions.json");
    EXPECT_THAT(store.read().problem, HasSubstr("is damaged"));
    EXPECT_EQ(store.set(kAutomation, Permission::deny), std::nullopt);
    EXPECT_EQ(store.get(kAutomation), Permission::deny);
    EXPECT_EQ(store.read().problem, "");
    std::vector<std::string> kept;
    for (auto const& entry : std::filesystem::directory_iterator(folder.path())) {
      auto const name = entry.path().filename().string();
      if (name.starts_with("permissions.json.broken-")) kept.push_back(folder.read(name));
    }
    EXPECT_THAT(kept, ElementsAre(damaged));
  }
}

TEST_F(Permissions, ThatAreWholeAreNotKeptTwice) {
  allow(kAutomation);
  allow(kAutomation);
  EXPECT_THAT(others(), ElementsAre());
}

TEST_F(Permissions, SurviveAFileThatIsNestedBeyondMeasure) {
  write("{\"camera\":" + std::string(200'000, '[') + std::string(200'000, ']') + "}");
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
  EXPECT_THAT(store_.read().problem, HasSubstr("is damaged"));
  allow(kAutomation);
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
}

TEST_F(Permissions, ThatCannotBeReadAreLeftAlone) {
  std::filesystem::create_directories(store_.path());
  EXPECT_THAT(store_.read().problem, HasSubstr("cannot be read"));
  EXPECT_THAT(store_.set(kAutomation, Permission::allow).value_or(""), HasSubstr("cannot be read and is left alone"));
  EXPECT_TRUE(std::filesystem::is_directory(store_.path()));
}

TEST_F(Permissions, DoNotWaitForAPipeInPlaceOfTheFile) {
  std::filesystem::create_directories(folder_ / "privacy");
  ASSERT_EQ(mkfifo(store_.path().c_str(), 0600), 0);
  EXPECT_EQ(store_.get(kAutomation), Permission::undecided);
}

TEST_F(Permissions, BehindALinkAreReplacedWhereTheyAre) {
  folder_.write("elsewhere.json", R"({"accessibility":{"app.morla.MORLA":"deny"}})");
  std::filesystem::create_directories(folder_ / "privacy");
  std::filesystem::create_symlink(folder_ / "elsewhere.json", store_.path());
  allow(kAutomation);
  EXPECT_TRUE(std::filesystem::is_symlink(store_.path()));
  EXPECT_THAT(folder_.read("elsewhere.json"), HasSubstr("com.example.toy"));
  EXPECT_EQ(store_.get({Service::accessibility, kClient, {}}), Permission::deny);
}

TEST_F(Permissions, SayWhenTheyCannotBeWritten) {
  folder_.write("file", "");
  PermissionStore const store(folder_.path() / "file/permissions.json");
  EXPECT_THAT(store.set(kAutomation, Permission::allow).value_or(""), HasSubstr("cannot be written"));
}

TEST_F(Permissions, AreGivenUpWhenAnotherProgramNeverEndsItsWrite) {
  allow(kAutomation);
  int const lock = open((store_.path() + ".lock").c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  EXPECT_THAT(store_.set(kAutomation, Permission::deny).value_or(""), HasSubstr("is held by another program"));
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
  close(lock);
  EXPECT_EQ(store_.set(kAutomation, Permission::deny), std::nullopt);
}

TEST_F(Permissions, AreNeverWrittenIntoWhatLiesInTheWay) {
  allow(kAutomation);
  folder_.write("precious", "mine");
  std::filesystem::create_symlink(folder_ / "precious", store_.path() + ".new");
  EXPECT_EQ(store_.set(kAutomation, Permission::deny), std::nullopt);
  EXPECT_EQ(folder_.read("precious"), "mine");
  EXPECT_FALSE(std::filesystem::is_symlink(store_.path()));

  ASSERT_EQ(mkfifo((store_.path() + ".new").c_str(), 0600), 0);
  EXPECT_EQ(store_.set(kAutomation, Permission::allow), std::nullopt);
  EXPECT_EQ(store_.get(kAutomation), Permission::allow);
  EXPECT_THAT(others(), ElementsAre());
}

TEST_F(Permissions, StayAsTheyWereWhenTheDiskIsFull) {
  allow(kAutomation);
  auto const before = text();
  {
    FullDisk const full(before.size() / 2);
    EXPECT_THAT(store_.set(kAutomation, Permission::deny).value_or(""), HasSubstr("cannot be written"));
  }
  EXPECT_EQ(text(), before);
  EXPECT_THAT(others(), ElementsAre()) << "half a file was left behind";
}

}  // namespace
}  // namespace morla::privacy
