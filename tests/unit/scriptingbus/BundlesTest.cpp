#include "platform/linux/scripting/Bundles.h"

#include <gtest/gtest.h>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::EnvironmentVariable;
using support::TemporaryFolder;

std::string plist(std::string const& identifier, std::string const& name) {
  std::string text = "<plist version=\"1.0\"><dict>";
  if (!identifier.empty()) text += "<key>CFBundleIdentifier</key><string>" + identifier + "</string>";
  if (!name.empty()) text += "<key>CFBundleName</key><string>" + name + "</string>";
  return text + "</dict></plist>";
}

class BundlesTest : public ::testing::Test {
 protected:
  BundlesTest() {
    folder_.write("system/Toy 16.app/Contents/Info.plist", plist("com.example.toy16", "Toy"));
    folder_.write("system/Toy 16.app/Contents/Resources/dictionary.tsv", "class\tbook\tBook\n");
    folder_.write("system/Nameless.APP/Contents/Info.plist", plist("com.example.nameless", ""));
    folder_.write("system/Nobody.app/Contents/Info.plist", plist("", "Nobody"));
    folder_.write("system/Broken.app/Contents/Info.plist", "<plist>");
    folder_.write("system/Loose/Contents/Info.plist", plist("com.example.loose", "Loose"));
    folder_.write("user/Applications/Toy 15.app/Contents/Info.plist", plist("com.example.toy15", "Toy"));
    folder_.write("user/Applications/Éclair.app/Contents/Info.plist", plist("com.example.eclair", ""));
  }

  [[nodiscard]] std::string identifierOf(std::string const& name) const {
    auto const bundle = bundles_.named(name);
    return bundle ? bundle->identifier : "none";
  }

  TemporaryFolder folder_;
  Bundles bundles_{{folder_.path() / "system", folder_.path() / "missing", folder_.path() / "user/Applications"}};
};

TEST_F(BundlesTest, FindsABundleByItsNameOrItsFilesName) {
  struct Row {
    char const* name;
    char const* identifier;
  };
  Row const rows[] = {
      {"Toy", "com.example.toy16"},
      {"tOY", "com.example.toy16"},
      {"Toy 16", "com.example.toy16"},
      {"toy 15.app", "com.example.toy15"},
      {"Toy.app", "com.example.toy16"},
      {"éclair", "com.example.eclair"},
      {"Nameless", "com.example.nameless"},
      {"Nobody", "none"},
      {"Broken", "none"},
      {"Loose", "none"},
      {"", "none"},
      {".app", "none"},
      {"com.example.toy16", "none"},
      {"To", "none"},
  };
  for (Row const& row : rows) EXPECT_EQ(identifierOf(row.name), row.identifier) << row.name;
}

TEST_F(BundlesTest, NamesABundleAfterItsFileWhenItsInfoPlistDoesNot) {
  EXPECT_EQ(bundles_.named("nameless")->name, "Nameless");
  EXPECT_EQ(bundles_.named("toy")->name, "Toy");
}

TEST_F(BundlesTest, FindsABundleByItsIdentifier) {
  EXPECT_EQ(bundles_.identifiedBy("COM.example.Toy15")->path, folder_.path() / "user/Applications/Toy 15.app");
  EXPECT_FALSE(bundles_.identifiedBy("com.example.toy"));
  EXPECT_FALSE(bundles_.identifiedBy(""));
}

TEST_F(BundlesTest, ReadsTheDictionaryOfABundle) {
  EXPECT_EQ(Bundles::dictionaryOf(*bundles_.named("Toy 16")), "class\tbook\tBook\n");
  EXPECT_EQ(Bundles::dictionaryOf(*bundles_.named("Toy 15")), std::nullopt);
}

TEST_F(BundlesTest, LooksIntoTheUsersApplications) {
  EnvironmentVariable const home("HOME", folder_.path() / "user");
  EXPECT_TRUE(Bundles::installed().identifiedBy("com.example.toy15"));
}

}  // namespace
}  // namespace morla::linux
