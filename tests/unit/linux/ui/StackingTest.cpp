#include "platform/linux/ui/Stacking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace morla::linux {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

StackedWindow managed(XWindowId id) {
  return {id, WindowKind::managed};
}
StackedWindow panel(XWindowId id, int level) {
  return {id, WindowKind::panel, level};
}
StackedWindow menu(XWindowId id) {
  return {id, WindowKind::other};
}

TEST(PanelsToRaise, AreNoneWhileTheyStandAboveManagedWindows) {
  EXPECT_THAT(panelsToRaise({managed(1), managed(2), panel(3, 3), panel(4, 25)}), IsEmpty());
}

TEST(PanelsToRaise, AreNoneWhereOnlyAMenuLiesAbove) {
  EXPECT_THAT(panelsToRaise({managed(1), panel(2, 3), menu(3)}), IsEmpty());
}

TEST(PanelsToRaise, AreAllThatFloatWhenAManagedWindowLiesAboveOne) {
  EXPECT_THAT(panelsToRaise({panel(1, 3), managed(2), panel(3, 25)}), ElementsAre(1, 3));
}

TEST(PanelsToRaise, PutAHigherLevelAboveALowerOne) {
  EXPECT_THAT(panelsToRaise({managed(1), panel(2, 25), panel(3, 3)}), ElementsAre(3, 2));
}

TEST(PanelsToRaise, KeepTheirOrderWithinALevel) {
  EXPECT_THAT(panelsToRaise({panel(7, 3), panel(5, 3), panel(6, 3), managed(1)}), ElementsAre(7, 5, 6));
}

TEST(PanelsToRaise, LeaveOutThoseThatDoNotFloat) {
  EXPECT_THAT(panelsToRaise({panel(1, 0), managed(2)}), IsEmpty());
  EXPECT_THAT(panelsToRaise({panel(1, 3), panel(2, 0)}), ElementsAre(1));
}

TEST(PanelsToSink, AreThoseThatDoNotFloatAboveTheFrontWindowLowestFirst) {
  EXPECT_THAT(panelsToSink({panel(1, 0), managed(2), panel(3, 0), managed(4), panel(5, 0), panel(6, 3)}, 2),
              ElementsAre(3, 5));
}

TEST(PanelsToSink, AreNoneForAWindowThatIsGone) {
  EXPECT_THAT(panelsToSink({managed(1), panel(2, 0)}, 9), IsEmpty());
}

}  // namespace
}  // namespace morla::linux
