#include "platform/linux/scripting/InfoPlist.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::TemporaryFolder;

std::string plist(std::string const& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n<dict>\n" +
         body + "</dict>\n</plist>\n";
}

TEST(InfoPlist, GivesIdentifierNameAndShortVersion) {
  TemporaryFolder const folder;
  folder.write("Contents/Info.plist", plist("<key>CFBundleIdentifier</key>\n<string>com.example.toy</string>\n"
                                            "<key>CFBundleName</key><string>Toy &amp; <![CDATA[<Co>]]></string>"
                                            "<key>CFBundleShortVersionString</key><string>16.5</string>"));
  auto const bundle = readBundle(folder.path());
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->identifier, "com.example.toy");
  EXPECT_EQ(bundle->name, "Toy & <Co>");
  EXPECT_EQ(bundle->shortVersion, "16.5");
}

TEST(InfoPlist, LeavesOutWhatIsMissingOrNoText) {
  TemporaryFolder const folder;
  folder.write("Contents/Info.plist",
               plist("<key>CFBundleName</key><integer>5</integer>"
                     "<key>Nested</key><dict><key>CFBundleIdentifier</key><string>inner</string></dict>"));
  auto const bundle = readBundle(folder.path());
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->identifier, std::nullopt);
  EXPECT_EQ(bundle->name, std::nullopt);
  EXPECT_EQ(bundle->shortVersion, std::nullopt);
}

TEST(InfoPlist, KeepsEmptyText) {
  TemporaryFolder const folder;
  folder.write("Contents/Info.plist", plist("<key>CFBundleName</key><string></string>"));
  auto const bundle = readBundle(folder.path());
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->name, "");
}

TEST(InfoPlist, APipeIsNoBundleAndHoldsNobodyUp) {
  TemporaryFolder const folder;
  std::filesystem::create_directory(folder / "Contents");
  ASSERT_EQ(mkfifo((folder / "Contents/Info.plist").c_str(), 0600), 0);
  EXPECT_FALSE(readBundle(folder.path()));
}

TEST(InfoPlist, GivesNothingForWhatIsNoBundle) {
  TemporaryFolder const folder;
  EXPECT_FALSE(readBundle(folder.path()));
  EXPECT_FALSE(readBundle("/nowhere/at/all"));
  for (char const* const text : {"", "bplist00\x01\x02", "<plist><array/></plist>", "<plist><dict><key>a", "{}"}) {
    folder.write("Contents/Info.plist", text);
    EXPECT_FALSE(readBundle(folder.path())) << text;
  }
}

}  // namespace
}  // namespace morla::linux
