#include "platform/linux/system/XConnection.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "PrivateDesktop.h"
#include "support/EnvironmentVariable.h"

namespace morla::linux {
namespace {

using support::EnvironmentVariable;

/// Answers of the server bring events along, and what they bring wakes the loop no more by itself.
class AnsweredEventsTest : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    ASSERT_FALSE(clients_.hasManager());
    x_->onEvents([this] {
      while (x_->nextEvent()) hasHeard_ = true;
    });
    x_->roundTrip();
    loop_.runDue();
    hasHeard_ = false;
  }

  /// When this returns, the server has sent the event to `x_`, which has not read it.
  void changeRootElsewhere() {
    auto const other = XConnection::open(loop_);
    std::uint32_t const value = 1;
    xcb_change_property(other->get(), XCB_PROP_MODE_REPLACE, other->root(), other->atom(Atom::netActiveWindow),
                        XCB_ATOM_WINDOW, 32, 1, &value);
    other->roundTrip();
  }

  ClientWindows clients_{*x_};
  bool hasHeard_ = false;
};

TEST_F(AnsweredEventsTest, AreHeardAfterTheQuestionForTheFocus) {
  changeRootElsewhere();
  (void)clients_.focused();
  EXPECT_TRUE(loop_.runUntil([this] { return hasHeard_; }));
}

TEST_F(AnsweredEventsTest, AreHeardAfterTheListOfWindowsThatNobodyManages) {
  changeRootElsewhere();
  (void)clients_.refresh();
  EXPECT_TRUE(loop_.runUntil([this] { return hasHeard_; }));
}

TEST(XConnection, IsNothingWithoutADisplay) {
  EnvironmentVariable const display("DISPLAY", ":nonsense");
  QtTestLoop loop;
  EXPECT_EQ(XConnection::open(loop), nullptr);
}

}  // namespace
}  // namespace morla::linux
