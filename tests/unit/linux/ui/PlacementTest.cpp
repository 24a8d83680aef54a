#include "platform/linux/ui/Placement.h"

#include <gtest/gtest.h>

#include <string>

namespace morla {

void PrintTo(GlobalRect const& rect, std::ostream* out) {
  *out << "(" << rect.origin.x << ", " << rect.origin.y << ") " << rect.size.width << "x" << rect.size.height;
}
void PrintTo(GlobalPoint const& p, std::ostream* out) {
  *out << "(" << p.x << ", " << p.y << ")";
}

namespace linux {
namespace {

/// Two displays side by side, the second 100 points lower, at a scale of 2: Qt keeps the second one's corner in device
/// pixels.
std::vector<ScreenArea> twoScreens() {
  return {{{{0, 0}, {960, 540}}, {{0, 0}, {960, 540}}}, {{{960, 100}, {1280, 720}}, {{1920, 200}, {1280, 720}}}};
}

struct PlaceCase {
  std::string name;
  Placing placing;
  GlobalRect asked;
  GlobalRect shown;
};

class VisiblePlace : public testing::TestWithParam<PlaceCase> {};

TEST_P(VisiblePlace, IsTheAskedOneOrTheNearestThatCanBeSeen) {
  auto const& [name, placing, asked, shown] = GetParam();
  EXPECT_EQ(visiblePlace(asked, twoScreens(), placing), shown);
}

constexpr Size kSmall{40, 40};

INSTANTIATE_TEST_SUITE_P(
    Cases, VisiblePlace,
    testing::Values(
        PlaceCase{"InsideStays", Placing::asAsked, {{100, 100}, kSmall}, {{100, 100}, kSmall}},
        PlaceCase{"HalfOutsideStays", Placing::asAsked, {{-20, 520}, kSmall}, {{-20, 520}, kSmall}},
        PlaceCase{"AcrossTwoDisplaysStays", Placing::asAsked, {{940, 200}, kSmall}, {{940, 200}, kSmall}},
        PlaceCase{"TouchingTheEdgeFromOutsideIsOutside", Placing::asAsked, {{-40, 10}, kSmall}, {{0, 10}, kSmall}},
        PlaceCase{"LeftOfAllComesToTheLeftEdge", Placing::asAsked, {{-500, 200}, kSmall}, {{0, 200}, kSmall}},
        PlaceCase{"RightOfAllComesToTheSecondDisplay", Placing::asAsked, {{9000, 50}, kSmall}, {{2200, 100}, kSmall}},
        PlaceCase{"AboveTheSecondDisplayComesDownToIt", Placing::asAsked, {{1500, 20}, kSmall}, {{1500, 100}, kSmall}},
        PlaceCase{"FullyShownStays", Placing::inFullIfPossible, {{100, 100}, kSmall}, {{100, 100}, kSmall}},
        PlaceCase{"PartlyOutsideIsShiftedInside",
                  Placing::inFullIfPossible,
                  {{2100, 700}, {240, 232}},
                  {{2000, 588}, {240, 232}}},
        PlaceCase{"AcrossTwoDisplaysGoesToTheOneThatHoldsMore",
                  Placing::inFullIfPossible,
                  {{930, 200}, kSmall},
                  {{920, 200}, kSmall}},
        PlaceCase{"TooLargeKeepsItsTopLeftCornerAndItsSize",
                  Placing::inFullIfPossible,
                  {{100, 100}, {5000, 4000}},
                  {{960, 100}, {5000, 4000}}}),
    [](auto const& test) { return test.param.name; });

TEST(VisiblePlaceWithoutDisplays, IsTheAskedOne) {
  GlobalRect const asked{{5000, 5000}, kSmall};
  EXPECT_EQ(visiblePlace(asked, {}, Placing::asAsked), asked);
}

TEST(QtCoordinates, AgreeWithPointsOnTheFirstDisplay) {
  EXPECT_EQ(pointsToQt(GlobalPoint{959, 539}, twoScreens()), (GlobalPoint{959, 539}));
  EXPECT_EQ(qtToPoints({959, 539}, twoScreens()), (GlobalPoint{959, 539}));
}

TEST(QtCoordinates, KeepTheCornerOfAFurtherDisplayInDevicePixels) {
  EXPECT_EQ(pointsToQt(GlobalPoint{970, 130}, twoScreens()), (GlobalPoint{1930, 230}));
  EXPECT_EQ(qtToPoints({1930, 230}, twoScreens()), (GlobalPoint{970, 130}));
}

TEST(QtCoordinates, OfAPlaceOutsideGoByTheNearestDisplay) {
  EXPECT_EQ(pointsToQt(GlobalPoint{2300, 130}, twoScreens()), (GlobalPoint{3260, 230}));
  EXPECT_EQ(qtToPoints({3260, 230}, twoScreens()), (GlobalPoint{2300, 130}));
}

TEST(QtCoordinates, OfAWindowGoByTheDisplayOfItsCentre) {
  EXPECT_EQ(pointsToQt(GlobalRect{{950, 200}, kSmall}, twoScreens()), (GlobalRect{{1910, 300}, kSmall}));
  EXPECT_EQ(pointsToQt(GlobalRect{{930, 200}, kSmall}, twoScreens()), (GlobalRect{{930, 200}, kSmall}));
}

}  // namespace
}  // namespace linux
}  // namespace morla
