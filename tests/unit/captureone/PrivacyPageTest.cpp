#include "captureone/permissions/PrivacyPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace morla::captureone {
namespace {

using privacy::Permission;
using Decision = privacy::PermissionStore::Decision;
using ::testing::ElementsAre;

constexpr char kAddress[] = "x-apple.systempreferences:com.apple.preference.security";

std::vector<std::string> shown(PrivacyPage page, std::vector<Decision> const& decisions) {
  std::vector<std::string> lines;
  for (auto const& row : rowsOf(page, decisions)) {
    auto const* decision = row.permission == Permission::allow  ? "allow"
                           : row.permission == Permission::deny ? "deny"
                                                                : "undecided";
    lines.push_back(row.client + ">" + row.target + ": " + decision);
  }
  return lines;
}

TEST(PrivacyPage, IsTheOneThatTheAddressNames) {
  std::string const address = kAddress;
  EXPECT_EQ(pageAt(address + "?Privacy_Automation"), PrivacyPage::automation);
  EXPECT_EQ(pageAt(address + "?Privacy_ScreenCapture"), PrivacyPage::screenRecording);
  EXPECT_EQ(pageAt(address + "?Privacy_Accessibility"), PrivacyPage::accessibility);
}

TEST(PrivacyPage, IsTheFirstForAnAddressThatNamesNone) {
  for (auto const* anchor : {"", "?", "?Privacy_Camera", "?privacy_screencapture", "?Privacy_ScreenCapture2"}) {
    EXPECT_EQ(pageAt(std::string(kAddress) + anchor), PrivacyPage::automation) << anchor;
  }
  EXPECT_EQ(pageAt(""), PrivacyPage::automation);
}

TEST(PrivacyPage, HasATitleAndAnExplanationOfItsOwn) {
  std::set<std::string> texts;
  for (auto const page : kPrivacyPages) {
    texts.insert(titleOf(page));
    texts.insert(explanationOf(page));
  }
  EXPECT_EQ(texts.size(), 6U);
  EXPECT_FALSE(texts.contains(""));
}

TEST(PrivacyRows, HaveMorlaAlsoWhenTheStoreIsEmpty) {
  EXPECT_THAT(shown(PrivacyPage::automation, {}), ElementsAre("MORLA>Capture One: undecided"));
  EXPECT_THAT(shown(PrivacyPage::screenRecording, {}), ElementsAre("MORLA>: undecided"));
  EXPECT_THAT(shown(PrivacyPage::accessibility, {}), ElementsAre("MORLA>: undecided"));
}

TEST(PrivacyRows, AreThoseOfThePageWithMorlaFirst) {
  std::vector<Decision> const decisions{
      {{PrivacyPage::automation, "app.another", "com.captureone.captureone16"}, Permission::deny},
      {{PrivacyPage::automation, "app.morla.MORLA", "com.captureone.captureone16"}, Permission::allow},
      {{PrivacyPage::automation, "app.morla.MORLA", "a.b"}, Permission::undecided},
      {{PrivacyPage::screenRecording, "app.another", ""}, Permission::allow},
  };
  EXPECT_THAT(shown(PrivacyPage::automation, decisions),
              ElementsAre("MORLA>Capture One: allow", "MORLA>a.b: undecided", "app.another>Capture One: deny"));
  EXPECT_THAT(shown(PrivacyPage::screenRecording, decisions), ElementsAre("MORLA>: undecided", "app.another>: allow"));
}

}  // namespace
}  // namespace morla::captureone
