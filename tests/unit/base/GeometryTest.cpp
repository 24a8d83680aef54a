#include "base/Geometry.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace morla {
namespace {

static_assert(!std::is_convertible_v<GlobalPoint, BottomLeftPoint> &&
                  !std::is_convertible_v<BottomLeftPoint, GlobalPoint>,
              "the two systems are told apart by type");

constexpr ScreenFlip kFlip(1080);

TEST(ScreenFlip, TurnsPointsOver) {
  EXPECT_EQ(kFlip.toGlobal(BottomLeftPoint{0, 0}), (GlobalPoint{0, 1080}));
  EXPECT_EQ(kFlip.toGlobal(BottomLeftPoint{10, 1080}), (GlobalPoint{10, 0}));
  EXPECT_EQ(kFlip.toBottomLeft(GlobalPoint{10, 30}), (BottomLeftPoint{10, 1050}));
}

TEST(ScreenFlip, NamesARectangleByItsOtherCorner) {
  EXPECT_EQ(kFlip.toGlobal(BottomLeftRect{{100, 200}, {300, 50}}), (GlobalRect{{100, 830}, {300, 50}}));
  EXPECT_EQ(kFlip.toBottomLeft(GlobalRect{{0, 0}, {1920, 1080}}), (BottomLeftRect{{0, 0}, {1920, 1080}}));
}

TEST(ScreenFlip, HangsOnTheFirstScreenForTheOthersAlike) {
  // A screen of 1440 points above the first one, then one below and to the left.
  EXPECT_EQ(kFlip.toGlobal(BottomLeftRect{{0, 1080}, {2560, 1440}}), (GlobalRect{{0, -1440}, {2560, 1440}}));
  EXPECT_EQ(kFlip.toGlobal(BottomLeftRect{{-800, -600}, {800, 600}}), (GlobalRect{{-800, 1080}, {800, 600}}));
}

TEST(ScreenFlip, IsItsOwnInverse) {
  for (double x = -2000; x <= 2000; x += 250.5) {
    for (double y = -2000; y <= 2000; y += 250.5) {
      BottomLeftPoint const point{x, y};
      EXPECT_EQ(kFlip.toBottomLeft(kFlip.toGlobal(point)), point);
      GlobalPoint const global{x, y};
      EXPECT_EQ(kFlip.toGlobal(kFlip.toBottomLeft(global)), global);
      BottomLeftRect const rect{{x, y}, {320.5, 90}};
      EXPECT_EQ(kFlip.toBottomLeft(kFlip.toGlobal(rect)), rect);
      GlobalRect const globalRect{{x, y}, {320.5, 90}};
      EXPECT_EQ(kFlip.toGlobal(kFlip.toBottomLeft(globalRect)), globalRect);
    }
  }
}

TEST(ScreenFlip, KeepsTheFourCornersOfARectangle) {
  BottomLeftRect const rect{{100, 200}, {300, 50}};
  auto const global = kFlip.toGlobal(rect);
  auto const topLeft = kFlip.toGlobal(BottomLeftPoint{100, 250});
  auto const bottomRight = kFlip.toGlobal(BottomLeftPoint{400, 200});
  EXPECT_EQ(global.origin, topLeft);
  EXPECT_EQ((GlobalPoint{global.origin.x + global.size.width, global.origin.y + global.size.height}), bottomRight);
}

}  // namespace
}  // namespace morla
