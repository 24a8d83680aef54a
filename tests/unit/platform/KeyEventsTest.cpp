#include "platform/KeyEvents.h"

#include <gtest/gtest.h>

namespace morla::platform {
namespace {

TEST(KeyEvents, AMonitorSeesTheKindsOfItsMask) {
  struct {
    EventMask mask;
    bool seesDown;
    bool seesUp;
  } const rows[] = {
      {kKeyDown, true, false}, {kKeyUp, false, true}, {kKeyDown | kKeyUp, true, true}, {{}, false, false}};
  for (auto const& row : rows) {
    EXPECT_EQ(row.mask.contains(maskOf(KeyEventType::down)), row.seesDown) << row.mask.bits;
    EXPECT_EQ(row.mask.contains(maskOf(KeyEventType::up)), row.seesUp) << row.mask.bits;
  }
}

TEST(KeyEvents, NoMaskHasAChangeOfModifiers) {
  EXPECT_FALSE(EventMask{~std::uint64_t{0}}.contains(maskOf(KeyEventType::flagsChanged)));
}

}  // namespace
}  // namespace morla::platform
