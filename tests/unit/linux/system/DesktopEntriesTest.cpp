#include "platform/linux/system/DesktopEntries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/system/ExecLine.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::TemporaryFolder;

std::string entryText(std::string const& lines) {
  return "[Desktop Entry]\nType=Application\n" + lines;
}

class DesktopEntriesTest : public testing::Test {
 protected:
  TemporaryFolder own_;
  TemporaryFolder system_;
  TemporaryFolder config_;
  DesktopEntries entries_{{own_.path(), system_.path()}, {config_.path()}};

  std::string identifierFor(std::string const& wmClass, std::string const& instance = "") {
    auto const* entry = entries_.forWindowClass(wmClass, instance);
    return entry == nullptr ? "none" : entry->identifier;
  }
  std::string handlerOf(std::string const& scheme) {
    auto const* entry = entries_.forScheme(scheme);
    return entry == nullptr ? "none" : entry->identifier;
  }
};

TEST_F(DesktopEntriesTest, APipeIsNoEntryAndHoldsNobodyUp) {
  own_.write("applications/real.desktop", entryText("Name=Real\nStartupWMClass=real\nExec=real\n"));
  for (auto const* name : {"applications/pipe.desktop", "applications/mimeapps.list"}) {
    ASSERT_EQ(mkfifo((own_ / name).c_str(), 0600), 0);
  }
  ASSERT_EQ(mkfifo((config_ / "mimeapps.list").c_str(), 0600), 0);
  EXPECT_EQ(identifierFor("real"), "real");
  EXPECT_EQ(identifierFor("pipe"), "none");
  EXPECT_EQ(handlerOf("mailto"), "none");
}

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByItsIdentifier) {
  own_.write("applications/com.example.a.desktop", entryText("Name=A\n"));
  own_.write("applications/com.example.hidden.desktop", entryText("Name=B\nHidden=true\n"));
  ASSERT_NE(entries_.withIdentifier("com.example.a"), nullptr);
  EXPECT_EQ(entries_.withIdentifier("com.example.a")->name, "A");
  EXPECT_EQ(entries_.withIdentifier("com.example.hidden"), nullptr);
  EXPECT_EQ(entries_.withIdentifier("com.example.none"), nullptr);
}

TEST(DesktopEntry, TakesTheFrenchNameWhereThereIsOne) {
  auto const both = parseDesktopEntry(entryText("Name=Files\nName[fr]=Fichiers\nName[de]=Dateien\n"));
  ASSERT_TRUE(both.has_value());
  EXPECT_EQ(both->name, "Fichiers");
  EXPECT_EQ(parseDesktopEntry(entryText("Name=Files\nName[de]=Dateien\n"))->name, "Files");
}

TEST(DesktopEntry, ReadsOnlyItsOwnGroup) {
  auto const entry = parseDesktopEntry(
      "# a comment\nName=before\n[Desktop Entry]\n\nType = Application\r\nName = Right \n[Desktop Action "
      "new]\nName=Wrong\n"
      "Exec=wrong\n");
  ASSERT_TRUE(entry.has_value());
  EXPECT_EQ(entry->name, "Right");
  EXPECT_EQ(entry->exec, "");
}

TEST(DesktopEntry, UndoesTheEscapesOfAValue) {
  EXPECT_EQ(parseDesktopEntry(entryText("Name=a\\sb\\\\c\\td\\x\n"))->name, "a b\\c\td\\x");
}

TEST(DesktopEntry, WhatIsNoApplicationIsNothing) {
  EXPECT_FALSE(parseDesktopEntry("").has_value());
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=a\n").has_value());
  EXPECT_FALSE(parseDesktopEntry(entryText("Name=a\nHidden=true\n")).has_value());
  EXPECT_FALSE(parseDesktopEntry("\x7F"
                                 "ELF\n[[[=")
                   .has_value());
}

TEST_F(DesktopEntriesTest, FindsTheApplicationOfAWindowByItsStartupClass) {
  system_.write("applications/com.captureone.captureone16.desktop",
                entryText("Name=Capture One\nStartupWMClass=Capture One\n"));
  system_.write("applications/other.desktop", entryText("Name=Other\nStartupWMClass=other\n"));
  EXPECT_EQ(identifierFor("Capture One"), "com.captureone.captureone16");
  EXPECT_EQ(identifierFor("Unknown"), "none");
}

TEST_F(DesktopEntriesTest, PrefersTheExactClassThenTheInstanceThenIgnoresCase) {
  system_.write("applications/a.desktop", entryText("Name=a\nStartupWMClass=VIEWER\n"));
  system_.write("applications/b.desktop", entryText("Name=b\nStartupWMClass=Viewer\n"));
  system_.write("applications/c.desktop", entryText("Name=c\nStartupWMClass=instance\n"));
  EXPECT_EQ(identifierFor("Viewer"), "b");
  EXPECT_EQ(identifierFor("viewer"), "a");
  EXPECT_EQ(identifierFor("none", "instance"), "c");
  EXPECT_EQ(identifierFor("Viewer", "instance"), "b");
}

TEST_F(DesktopEntriesTest, AnEntryWithoutAClassBelongsToNoWindow) {
  system_.write("applications/a.desktop", entryText("Name=a\n"));
  EXPECT_EQ(identifierFor(""), "none");
}

TEST_F(DesktopEntriesTest, TheUsersFileHidesTheSystemsOfTheSameName) {
  system_.write("applications/a.desktop", entryText("Name=system\nStartupWMClass=a\n"));
  system_.write("applications/gone.desktop", entryText("Name=system\nStartupWMClass=gone\n"));
  own_.write("applications/a.desktop", entryText("Name=own\nStartupWMClass=a\n"));
  own_.write("applications/gone.desktop", entryText("Name=own\nHidden=true\n"));
  ASSERT_NE(entries_.forWindowClass("a", ""), nullptr);
  EXPECT_EQ(entries_.forWindowClass("a", "")->name, "own");
  EXPECT_EQ(identifierFor("gone"), "none");
}

TEST_F(DesktopEntriesTest, TheIdOfAFileInASubfolderHasTheFoldersName) {
  system_.write("applications/vendor/a.desktop", entryText("Name=a\nStartupWMClass=a\n"));
  EXPECT_EQ(identifierFor("a"), "vendor-a");
}

TEST_F(DesktopEntriesTest, SeesAnApplicationThatIsInstalledLater) {
  EXPECT_EQ(identifierFor("a"), "none");
  system_.write("applications/a.desktop", entryText("Name=a\nStartupWMClass=a\n"));
  EXPECT_EQ(identifierFor("a"), "a");
  system_.write("applications/vendor/b.desktop", entryText("Name=b\nStartupWMClass=b\n"));
  EXPECT_EQ(identifierFor("b"), "vendor-b");
}

TEST_F(DesktopEntriesTest, FindsTheApplicationThatOpensAScheme) {
  system_.write("applications/b.desktop", entryText("Exec=b %u\nMimeType=text/html;x-scheme-handler/https;\n"));
  system_.write("applications/a.desktop", entryText("Exec=a %u\nMimeType=x-scheme-handler/http\n"));
  EXPECT_EQ(handlerOf("https"), "b");
  EXPECT_EQ(handlerOf("http"), "a");
  EXPECT_EQ(handlerOf("mailto"), "none");
}

TEST_F(DesktopEntriesTest, TheUsersChoiceOpensAScheme) {
  system_.write("applications/a.desktop", entryText("Exec=a %u\nMimeType=x-scheme-handler/https;\n"));
  system_.write("applications/b.desktop", entryText("Exec=b %u\nMimeType=x-scheme-handler/https;\n"));
  EXPECT_EQ(handlerOf("https"), "a");
  config_.write("mimeapps.list", "[Default Applications]\nx-scheme-handler/https=removed.desktop;b.desktop;\n");
  EXPECT_EQ(handlerOf("https"), "b");
}

TEST(ExecLine, PutsTheAddressWhereTheLineWantsIt) {
  struct Row {
    char const* label;
    char const* exec;
    std::vector<std::string> command;
  };
  Row const rows[] = {
      {"one address", "open %u", {"open", "u:x y"}},
      {"several addresses", "open --new %U", {"open", "--new", "u:x y"}},
      {"within a word", "open --url=%u", {"open", "--url=u:x y"}},
      {"quoted program", "\"/opt/my app/open\" \"%u\"", {"/opt/my app/open", "u:x y"}},
      {"escapes in quotes", "open \"a\\\"b\\$c\\\\\"", {"open", "a\"b$c\\"}},
      {"empty word", "open \"\" %u", {"open", "", "u:x y"}},
      {"percent sign", "open 100%%", {"open", "100%"}},
      {"icon vanishes", "open %i %u", {"open", "u:x y"}},
      {"name and file", "open %c %k", {"open", "Name", "/a.desktop"}},
      {"open quote", "open \"%u", {}},
      {"nothing", "  ", {}},
  };
  DesktopEntry entry;
  entry.name = "Name";
  entry.path = "/a.desktop";
  for (auto const& row : rows) {
    entry.exec = row.exec;
    EXPECT_EQ(commandFor(entry, "u:x y"), row.command) << row.label;
  }
}

}  // namespace
}  // namespace morla::linux
