#include "platform/linux/scripting/ScriptHost.h"

#include <gtest/gtest.h>

#include "ServerThread.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"
#include "toy/ToyLibrary.h"

namespace morla::linux {
namespace {

using privacy::Permission;
using privacy::PermissionQuestion;
using privacy::PermissionStore;
using namespace applescript;
using scriptingbus::testing::ServerThread;
using scriptingbus::testing::ToyLibrary;
using support::PrivateBus;
using support::TemporaryFolder;
using Kind = ApplicationReference::Kind;

constexpr char kClient[] = "app.morla.MORLA";
constexpr char kToy[] = "com.example.toy";

class ScriptHostTest : public ::testing::Test {
 protected:
  void install() const {
    applications_.write("Toy Library.app/Contents/Info.plist",
                        "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.example.toy</string>"
                        "<key>CFBundleName</key><string>Toy Library</string></dict></plist>");
    applications_.write("Toy Library.app/Contents/Resources/dictionary.tsv", ToyLibrary::dictionary());
    bus_.installService(kToy, MORLA_TOY_PROGRAM);
  }
  void decide(Permission permission) const {
    ASSERT_EQ(PermissionStore::ofUser().set({PermissionQuestion::Service::automation, kClient, kToy}, permission),
              std::nullopt);
  }
  [[nodiscard]] ServerThread runToy(std::string const& name) {
    return ServerThread({kToy, name, "1.0", ToyLibrary::dictionary()},
                        [this](AppleEvent const& event, scriptingbus::ScriptingServer::Answer const& answer) {
                          answer(library_.handle(event));
                        });
  }
  [[nodiscard]] std::string located(ApplicationReference const& reference) {
    auto const found = host_.locate(reference);
    return found ? found->name + " " + found->identifier : "none";
  }

  PrivateBus bus_;  // whose data folder holds the permissions, too
  TemporaryFolder applications_;
  ToyLibrary library_;
  ScriptingServices services_{Bundles({applications_.path()}), PermissionStore::ofUser(), kClient, nullptr};
  ScriptHost host_{services_};
  ApplicationInformation const toy_{"Toy Library", kToy};
};

TEST_F(ScriptHostTest, LocatesInstalledApplicationsWithoutStartingThem) {
  EXPECT_EQ(located({Kind::name, "Toy Library"}), "none");
  install();
  EXPECT_EQ(located({Kind::name, "toy library"}), "Toy Library com.example.toy");
  EXPECT_EQ(located({Kind::identifier, kToy}), "Toy Library com.example.toy");
  EXPECT_EQ(located({Kind::name, kToy}), "none");
  ASSERT_NE(host_.dictionary(toy_), nullptr);
  EXPECT_FALSE(host_.isRunning({Kind::name, "Toy Library"}));
  EXPECT_FALSE(host_.isRunning({Kind::identifier, kToy}));
}

TEST_F(ScriptHostTest, LocatesARunningApplicationThatIsNotInstalled) {
  EXPECT_FALSE(host_.isRunning({Kind::name, "Travelling Library"}));
  {
    auto const server = runToy("Travelling Library");
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(located({Kind::name, "travelling library"}), "Travelling Library com.example.toy");
      EXPECT_TRUE(host_.isRunning({Kind::name, "TRAVELLING Library"}));
    }
    EXPECT_EQ(located({Kind::identifier, kToy}), "Travelling Library com.example.toy");
    EXPECT_TRUE(host_.isRunning({Kind::identifier, kToy}));
    EXPECT_FALSE(host_.isRunning({Kind::name, "Toy Library"}));
  }
  EXPECT_FALSE(host_.isRunning({Kind::name, "Travelling Library"}));
  EXPECT_EQ(located({Kind::name, "Travelling Library"}), "none");
}

TEST_F(ScriptHostTest, PrefersTheRunningApplicationToAnInstalledOneOfTheSameName) {
  applications_.write("Toy Library.app/Contents/Info.plist",
                      "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.example.other</string>"
                      "</dict></plist>");
  EXPECT_EQ(located({Kind::name, "Toy Library"}), "Toy Library com.example.other");
  auto const server = runToy("Toy Library");
  EXPECT_EQ(located({Kind::name, "Toy Library"}), "Toy Library com.example.toy");
}

TEST_F(ScriptHostTest, HasNoDictionaryForAnApplicationWithoutOne) {
  EXPECT_EQ(host_.dictionary(toy_), nullptr);
  applications_.write("Toy Library.app/Contents/Resources/dictionary.tsv", "nonsense\n");
  EXPECT_EQ(host_.dictionary(toy_), nullptr);
}

TEST_F(ScriptHostTest, AsksThePermissionAtTheTellAndAtEveryEvent) {
  auto const server = runToy("Toy Library");
  AppleEvent const count{"core"_code, "cnte"_code, {}};
  ASSERT_TRUE(host_.enterTell(toy_));
  EXPECT_EQ(host_.enterTell(toy_)->number, errors::kConsentPending);
  EXPECT_EQ(std::get<EventError>(host_.send(toy_, count)).number, errors::kConsentPending);
  decide(Permission::allow);
  EXPECT_FALSE(host_.enterTell(toy_));
  EXPECT_TRUE(std::get<Value>(host_.send(toy_, count)) == Value(std::int64_t{3}));
  decide(Permission::deny);
  EXPECT_EQ(std::get<EventError>(host_.send(toy_, count)).number, errors::kNotPermitted);
}

TEST_F(ScriptHostTest, StartsAnApplicationAtTheFirstEventAndNotBefore) {
  install();
  decide(Permission::allow);
  EXPECT_FALSE(host_.enterTell(toy_));
  EXPECT_FALSE(host_.isRunning({Kind::identifier, kToy}));
  EXPECT_TRUE(std::get<Value>(host_.send(toy_, {"core"_code, "cnte"_code, {}})) == Value(std::int64_t{3}));
  EXPECT_TRUE(host_.isRunning({Kind::name, "Toy Library"}));
}

TEST_F(ScriptHostTest, DoesNotStartAnApplicationThatItMayNotTalkTo) {
  install();
  decide(Permission::deny);
  EXPECT_EQ(std::get<EventError>(host_.send(toy_, {"core"_code, "cnte"_code, {}})).number, errors::kNotPermitted);
  EXPECT_FALSE(host_.isRunning({Kind::identifier, kToy}));
}

TEST_F(ScriptHostTest, TellsFilesFromFolders) {
  using FileKind = Host::FileKind;
  applications_.write("folder/file", "");
  EXPECT_EQ(host_.fileKindAt(applications_.path() / "folder"), FileKind::folder);
  EXPECT_EQ(host_.fileKindAt(applications_.path() / "folder/"), FileKind::folder);
  EXPECT_EQ(host_.fileKindAt(applications_.path() / "folder/file"), FileKind::file);
  EXPECT_EQ(host_.fileKindAt(applications_.path() / "folder/none"), FileKind::none);
  EXPECT_EQ(host_.fileKindAt(""), FileKind::none);
}

}  // namespace
}  // namespace morla::linux
