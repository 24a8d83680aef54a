#include "platform/linux/system/FrontTracker.h"

#include <gtest/gtest.h>

namespace morla::linux {
namespace {

WindowOwner const kSelf{1, "morla"};
WindowOwner const kCaptureOne{2, "Capture One"};
WindowOwner const kEditor{3, "editor"};
FrontTracker::Window const kOwnWindow{10, kSelf};
FrontTracker::Window const kCaptureWindow{20, kCaptureOne};
FrontTracker::Window const kCaptureDialog{21, kCaptureOne};
FrontTracker::Window const kEditorWindow{30, kEditor};

class FrontTrackerTest : public testing::Test {
 protected:
  FrontTracker tracker_{kSelf};
};

TEST_F(FrontTrackerTest, NobodyIsFrontmostAtFirst) {
  EXPECT_EQ(tracker_.front(), std::nullopt);
}

TEST_F(FrontTrackerTest, TheOwnerOfTheActiveWindowIsFrontmost) {
  tracker_.activeWindowIs(kCaptureWindow);
  EXPECT_EQ(tracker_.front(), kCaptureOne);
  tracker_.activeWindowIs(kEditorWindow);
  EXPECT_EQ(tracker_.front(), kEditor);
}

TEST_F(FrontTrackerTest, NoActiveWindowLeavesTheFrontAlone) {
  tracker_.activeWindowIs(kCaptureWindow);
  tracker_.activeWindowIs(std::nullopt);
  EXPECT_EQ(tracker_.front(), kCaptureOne);
}

TEST_F(FrontTrackerTest, OurOwnWindowsLeaveTheFrontAlone) {
  tracker_.activeWindowIs(kCaptureWindow);
  tracker_.activeWindowIs(kOwnWindow);
  tracker_.focusEntered(kOwnWindow);
  EXPECT_EQ(tracker_.front(), kCaptureOne);
}

TEST_F(FrontTrackerTest, TheFocusAloneMovesTheFrontToo) {
  tracker_.focusEntered(kEditorWindow);
  EXPECT_EQ(tracker_.front(), kEditor);
}

TEST_F(FrontTrackerTest, WeAreFrontmostUntilAnotherWindowGetsTheFocus) {
  tracker_.activeWindowIs(kCaptureWindow);
  tracker_.activateSelf();
  EXPECT_EQ(tracker_.front(), kSelf);
  tracker_.focusEntered(kCaptureWindow);
  EXPECT_EQ(tracker_.front(), kCaptureOne);
}

TEST_F(FrontTrackerTest, AManagerThatRepeatsItselfDoesNotTakeTheFrontFromUs) {
  tracker_.activeWindowIs(kCaptureWindow);
  tracker_.activateSelf();
  tracker_.activeWindowIs(kCaptureWindow);
  EXPECT_EQ(tracker_.front(), kSelf);
}

TEST_F(FrontTrackerTest, AManagerThatTellsLateOfAWindowThatHasTheFocusDoesNotTakeTheFrontFromUs) {
  tracker_.focusEntered(kCaptureWindow);
  tracker_.activateSelf();
  tracker_.activeWindowIs(kCaptureWindow);
  EXPECT_EQ(tracker_.front(), kSelf);
}

TEST_F(FrontTrackerTest, AWindowThatBecomesActiveAgainTakesTheFront) {
  tracker_.activeWindowIs(kCaptureWindow);
  tracker_.activateSelf();
  tracker_.activeWindowIs(std::nullopt);
  EXPECT_EQ(tracker_.front(), kSelf);
  tracker_.activeWindowIs(kCaptureWindow);
  EXPECT_EQ(tracker_.front(), kCaptureOne);
}

TEST_F(FrontTrackerTest, RemembersTheWindowThatEachApplicationUsedLast) {
  tracker_.focusEntered(kCaptureWindow);
  tracker_.focusEntered(kCaptureDialog);
  tracker_.focusEntered(kEditorWindow);
  EXPECT_EQ(tracker_.lastFocused(kCaptureOne), kCaptureDialog.id);
  tracker_.windowVanished(kCaptureDialog.id);
  EXPECT_EQ(tracker_.lastFocused(kCaptureOne), std::nullopt);
  EXPECT_EQ(tracker_.lastFocused(kEditor), kEditorWindow.id);
}

TEST_F(FrontTrackerTest, KnowsWhichWindowHasTheKeyboard) {
  tracker_.focusEntered(kCaptureWindow);
  ASSERT_TRUE(tracker_.focused().has_value());
  EXPECT_EQ(tracker_.focused()->id, kCaptureWindow.id);
  tracker_.focusEntered(kEditorWindow);
  tracker_.focusLeft(kCaptureWindow.id);  // told late: somebody else has it by now
  EXPECT_EQ(tracker_.focused()->id, kEditorWindow.id);
  tracker_.windowVanished(kEditorWindow.id);
  EXPECT_FALSE(tracker_.focused().has_value());
}

TEST(WindowOwner, IsTheProcessAndOnlyWithoutOneTheClass) {
  EXPECT_EQ((WindowOwner{5, "a"}), (WindowOwner{5, "b"}));
  EXPECT_NE((WindowOwner{5, "a"}), (WindowOwner{6, "a"}));
  EXPECT_EQ((WindowOwner{0, "a"}), (WindowOwner{0, "a"}));
  EXPECT_NE((WindowOwner{0, "a"}), (WindowOwner{0, "b"}));
}

}  // namespace
}  // namespace morla::linux
