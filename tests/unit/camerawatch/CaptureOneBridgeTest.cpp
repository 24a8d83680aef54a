#include "camerawatch/CaptureOneBridge.h"

#include <gtest/gtest.h>

#include "platform/fake/FakePlatform.h"

namespace morla::camerawatch {
namespace {

using platform::BundleInformation;
using platform::RunningApplication;

constexpr char kHomeApplications[] = "/Users/photographe/Applications";

struct World {
  fake::FakePlatform fake;
  CaptureOneBridge bridge{fake.workspace, fake.files};

  void install(std::string const& folder, std::string const& name, BundleInformation bundle) {
    fake.files.folders[folder].push_back(name);
    fake.workspace.bundles[folder + "/" + name] = std::move(bundle);
  }
  void run(std::optional<std::string> name, std::optional<std::string> identifier = "com.example.app") {
    fake.workspace.running.push_back(
        {static_cast<std::int64_t>(fake.workspace.running.size()) + 10, std::move(name), std::move(identifier)});
  }
};

TEST(CaptureOneFocus, ARunningProcessCountsWhateverItsEditionAndCase) {
  struct Row {
    std::optional<std::string> name;
    bool counts;
  };
  for (auto const& [name, counts] : {
           Row{"Capture One", true},
           Row{"Capture One Express", true},
           Row{"CAPTURE ONE", true},
           Row{"My Capture One 23 beta", true},
           Row{"CaptureOne", false},
           Row{"Capture  One", false},
           Row{"", false},
           Row{std::nullopt, false},
       }) {
    EXPECT_EQ(isCaptureOneName(name), counts) << name.value_or("no name");
  }
}

TEST(CaptureOneFocus, TheFirstInTheSystemsOrderIsTaken) {
  World world;
  world.run(std::nullopt);
  world.run("Finder");
  world.run("Capture One Express", "first");
  world.run("Capture One", "second");
  EXPECT_EQ(world.bridge.captureOneRunningApp()->bundleIdentifier, "first");
}

TEST(CaptureOneFocus, BringsCaptureOneToTheFrontIfItRuns) {
  World world;
  CaptureOneFocus const focus(world.fake.workspace);
  focus.activateIfRunning();
  EXPECT_TRUE(world.fake.workspace.activated.empty());
  world.run("Capture One", "com.captureone.captureone16");
  focus.activateIfRunning();
  EXPECT_EQ(world.fake.workspace.frontmostApplication()->localizedName, "Capture One");
}

TEST(CaptureOneBridge, InstallsAreListedFromBothFoldersTheSystemsFirst) {
  World world;
  world.install(kHomeApplications, "Capture One 22.app", {"id.22", "C1 22", "15.1"});
  world.install("/Applications", "Capture One 23.app", {"id.23", std::nullopt, "16.1"});
  auto const installed = world.bridge.installedCaptureOneApps();
  ASSERT_EQ(installed.size(), 2u);
  EXPECT_EQ(installed[0], (CaptureOneAppInfo{"/Applications/Capture One 23.app", "id.23", "16.1", "Capture One 23"}));
  EXPECT_EQ(installed[1],
            (CaptureOneAppInfo{std::string(kHomeApplications) + "/Capture One 22.app", "id.22", "15.1", "C1 22"}));
}

TEST(CaptureOneBridge, SameIdentifierTwiceIsNotMerged) {
  World world;
  world.install("/Applications", "Capture One.app", {"same", std::nullopt, "15.0"});
  world.install(kHomeApplications, "Capture One.app", {"same", std::nullopt, "16.0"});
  EXPECT_EQ(world.bridge.installedCaptureOneApps().size(), 2u);
}

TEST(CaptureOneBridge, OnlyBundlesWhoseNameBeginsWithTheWordsQualify) {
  struct Row {
    std::string name;
    bool qualifies;
  };
  for (auto const& [name, qualifies] : {
           Row{"Capture One.app", true},
           Row{"CAPTURE ONE 23.APP", true},
           Row{"capture one express.App", true},
           Row{"My Capture One.app", false},
           Row{"Capture One", false},
           Row{"Capture One.dmg", false},
           Row{"Capture One.app.zip", false},
       }) {
    World world;
    world.install("/Applications", name, {"id", std::nullopt, std::nullopt});
    EXPECT_EQ(world.bridge.installedCaptureOneApps().size() == 1, qualifies) << name;
  }
}

TEST(CaptureOneBridge, ABundleWithoutAnIdentifierIsNoInstall) {
  World world;
  world.install("/Applications", "Capture One 1.app", {std::nullopt, "Capture One", "1.0"});
  world.install("/Applications", "Capture One 2.app", {"", "Capture One", "2.0"});
  world.fake.files.folders["/Applications"].push_back("Capture One 3.app");  // a folder that is no bundle
  EXPECT_TRUE(world.bridge.installedCaptureOneApps().empty());
  EXPECT_EQ(world.bridge.preferredCaptureOneApp(), std::nullopt);
}

TEST(CaptureOneBridge, TheExactNameWinsOverAHigherVersion) {
  World world;
  world.install("/Applications", "Capture One 23.app", {"id.23", std::nullopt, "16.1"});
  world.install("/Applications", "Capture One.app", {"id.plain", std::nullopt, "15.0"});
  EXPECT_EQ(world.bridge.preferredCaptureOneApp()->bundleId, "id.plain");
}

TEST(CaptureOneBridge, OtherwiseTheHighestVersionIsPreferred) {
  World world;
  world.install("/Applications", "Capture One 20.app", {"id.20", std::nullopt, "13.1.2"});
  world.install("/Applications", "Capture One 21.app", {"id.21", std::nullopt, "14.0"});
  EXPECT_EQ(world.bridge.preferredCaptureOneApp()->bundleId, "id.21");
}

TEST(CaptureOneBridge, AnInstallWithoutAVersionRanksLast) {
  World world;
  world.install("/Applications", "Capture One A.app", {"none", std::nullopt, std::nullopt});
  world.install("/Applications", "Capture One B.app", {"some", std::nullopt, "0.1"});
  EXPECT_EQ(world.bridge.preferredCaptureOneApp()->bundleId, "some");
}

TEST(CaptureOneBridge, VersionsAreComparedNumberByNumber) {
  struct Row {
    std::string_view a, b;
    int expected;
  };
  for (auto const& [a, b, expected] : {
           Row{"16.2.1", "9.3", 1},
           Row{"9.3", "16.2.1", -1},
           Row{"16.2", "16.2", 0},
           Row{"16.2", "16.2.1", -1},
           Row{"16.10", "16.9", 1},
           Row{"16.02", "16.2", 0},
           Row{"99999999999999999999999.1", "100000000000000000000000", -1},
           Row{"16.2b", "16.2a", 1},
           Row{"", "0", -1},
           Row{"0", "00", 0},
       }) {
    EXPECT_EQ(compareNumerically(a, b), expected) << a << " against " << b;
  }
}

TEST(CaptureOneBridge, TargetIsTheRunningCopyByIdentifier) {
  World world;
  world.run("Capture One", "running.id");
  world.install("/Applications", "Capture One.app", {"installed.id", std::nullopt, "16.0"});
  EXPECT_EQ(world.bridge.appleScriptTarget(), "application id \"running.id\"");
}

TEST(CaptureOneBridge, TargetOfARunningCopyWithAnEmptyIdentifierIsThePreferredInstall) {
  World world;
  world.run("Capture One", "");
  world.install("/Applications", "Capture One.app", {"installed.id", std::nullopt, "16.0"});
  EXPECT_EQ(world.bridge.appleScriptTarget(), "application id \"installed.id\"");
}

TEST(CaptureOneBridge, TargetWithoutIdentifierAndInstallIsThePlainName) {
  for (auto const& identifier : {std::optional<std::string>(""), std::optional<std::string>()}) {
    World world;
    world.run("Capture One", identifier);
    EXPECT_EQ(world.bridge.appleScriptTarget(), "application \"Capture One\"");
  }
}

TEST(CaptureOneBridge, NothingIsCachedBetweenTwoLooks) {
  World world;
  EXPECT_EQ(world.bridge.captureOneRunningApp(), std::nullopt);
  world.run("Capture One");
  EXPECT_TRUE(world.bridge.captureOneRunningApp().has_value());
  world.fake.workspace.running.clear();
  EXPECT_EQ(world.bridge.captureOneRunningApp(), std::nullopt);
}

}  // namespace
}  // namespace morla::camerawatch
