#include <QAbstractButton>

#include "platform/linux/ui/DrawingPainter.h"
#include "platform/linux/ui/views/FigureWidgets.h"
#include "platform/linux/ui/views/StackWidgets.h"
#include "platform/linux/ui/views/TextWidget.h"
#include "unit/linux/ui/ViewTest.h"

namespace morla::linux {
namespace {

using testing::ElementsAre;
using view::node;
using view::Node;

constexpr view::Colour kRed{1, 0, 0, 1};
constexpr view::Colour kBlue{0, 0, 1, 1};

Node square(double side, view::Colour colour) {
  return node(view::Canvas{{{side, side}, {view::FillRoundedRect{{{0, 0}, {side, side}}, 0, colour}}}});
}
Node text(std::string value) {
  return node(view::Text{std::move(value), {}, {}, {}});
}
Node spacer() {
  return node(view::Spacer{});
}

view::Frame ofSize(double width, double height) {
  view::Frame frame;
  frame.width = width;
  frame.height = height;
  return frame;
}
view::Frame filling() {
  view::Frame frame;
  frame.fillsWidth = true;
  frame.fillsHeight = true;
  return frame;
}

TEST(SharedLengths, GivesWhatIsToSpareToThoseThatGrow) {
  EXPECT_THAT(sharedLengths({{10, 10, false}, {0, 0, true}, {5, 5, false}, {0, 0, true}}, 40),
              ElementsAre(10, 12, 5, 13));
}

TEST(SharedLengths, LeavesTheRestWhereNobodyGrows) {
  EXPECT_THAT(sharedLengths({{10, 10, false}, {5, 5, false}}, 40), ElementsAre(10, 5));
}

TEST(SharedLengths, TakesWhatIsMissingFromTheLongestFirst) {
  EXPECT_THAT(sharedLengths({{0, 100, false}, {0, 40, false}, {20, 20, false}}, 120), ElementsAre(60, 40, 20));
  EXPECT_THAT(sharedLengths({{0, 100, false}, {0, 40, false}, {20, 20, false}}, 71), ElementsAre(26, 25, 20));
}

TEST(SharedLengths, NeverGoesBelowTheSmallest) {
  EXPECT_THAT(sharedLengths({{30, 100, false}, {20, 20, false}}, 10), ElementsAre(30, 20));
}

TEST_F(ViewTest, CentresTheChildrenOfAPileOnTopOfEachOther) {
  show(node(view::ZStack{{square(10, kRed), square(4, kBlue)}}));
  EXPECT_EQ(view_.fittingSize(), (Size{10, 10}));
  auto const image = imageOf(view_);
  EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::blue));
  EXPECT_EQ(image.pixelColor(6, 6), QColor(Qt::blue));
  EXPECT_EQ(image.pixelColor(7, 7), QColor(Qt::red));
}

TEST_F(ViewTest, PutsAnOddChildOnWholePixels) {
  for (double const scale : {1.0, 1.5, 2.0}) {
    show(square(4, kRed), QSize(11, 11));
    auto const runs = opaquePixels(imageOf(view_, scale), 1);
    ASSERT_FALSE(runs.empty());
    for (auto const& run : runs) EXPECT_EQ(run.width, 4 * scale) << "row " << run.y << " at " << scale;
  }
}

TEST_F(ViewTest, PutsTheChildrenOfARowSideBySideAndTheSpareIntoTheSpacer) {
  show(node(view::HStack{{square(10, kRed), spacer(), square(20, kBlue)}, 6}), QSize(100, 30));
  auto const squares = all<CanvasWidget>();
  ASSERT_EQ(squares.size(), 2U);
  EXPECT_EQ(squares[0]->geometry(), QRect(0, 10, 10, 10));
  EXPECT_EQ(squares[1]->geometry(), QRect(80, 5, 20, 20));
}

TEST_F(ViewTest, PutsTheChildrenOfAColumnBelowEachOtherAtTheAskedSide) {
  using view::HorizontalAlignment;
  for (auto const& [side, left] : {std::pair(HorizontalAlignment::leading, 0),
                                   {HorizontalAlignment::centre, 5},
                                   {HorizontalAlignment::trailing, 10}}) {
    show(node(view::VStack{{square(10, kRed), square(20, kBlue)}, 4, side}));
    EXPECT_EQ(view_.fittingSize(), (Size{20, 34}));
    auto const squares = all<CanvasWidget>();
    EXPECT_EQ(squares[0]->geometry(), QRect(left, 0, 10, 10));
    EXPECT_EQ(squares[1]->geometry(), QRect(0, 14, 20, 20));
  }
}

TEST_F(ViewTest, KeepsAFixedSizeOfWhatFillsItsPlace) {
  auto fixed = ofSize(30, 20);
  fixed.fillsWidth = true;
  fixed.fillsHeight = true;
  show(node(view::VStack{{node(view::HStack{{square(10, kRed).framed(fixed), spacer()}, 0})}, 0}), QSize(100, 50));
  EXPECT_EQ(the<CanvasWidget>().size(), QSize(30, 20));
}

TEST_F(ViewTest, StretchesADividerAcrossItsStack) {
  show(node(view::VStack{{square(30, kRed), node(view::Divider{}), square(10, kRed)}, 0}), QSize(80, 41));
  EXPECT_EQ(the<DividerWidget>().geometry(), QRect(0, 30, 80, 1));
}

TEST_F(ViewTest, AddsPaddingInsideTheFrameAndTheBackgroundBehindBoth) {
  auto tree = square(10, kBlue)
                  .padded(view::Edges{1, 2, 3, 4})
                  .framed(ofSize(40, 20))
                  .on(view::RoundedRect{0, view::Corners::circular, {kRed, 1}});
  show(tree);
  EXPECT_EQ(view_.fittingSize(), (Size{40, 20}));
  auto const image = imageOf(view_);
  EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(39, 19), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(19, 9), QColor(Qt::blue));
  EXPECT_EQ(image.pixelColor(13, 9), QColor(Qt::red));
}

TEST_F(ViewTest, FillsWhereAFrameSaysSo) {
  show(node(view::HStack{{square(10, kRed).framed(filling()), square(10, kRed)}, 0}), QSize(100, 50));
  EXPECT_EQ(all<CanvasWidget>()[0]->geometry(), QRect(0, 0, 90, 50));
}

TEST_F(ViewTest, KeepsThePlaceOfWhatIsHidden) {
  auto const tree = [](bool isHidden) {
    return node(view::HStack{{square(10, kRed).hidden(isHidden), square(10, kBlue)}, 0});
  };
  show(tree(true));
  EXPECT_EQ(view_.fittingSize(), (Size{20, 10}));
  EXPECT_EQ(imageOf(view_).pixelColor(5, 5).alpha(), 0);
  EXPECT_EQ(imageOf(view_).pixelColor(15, 5), QColor(Qt::blue));
  show(tree(false));
  EXPECT_EQ(imageOf(view_).pixelColor(5, 5), QColor(Qt::red));
}

TEST_F(ViewTest, BendsContinuousCornersMoreGentlyThanCircularOnes) {
  auto const covered = [this](view::Corners corners) {
    show(spacer().on(view::RoundedRect{14, corners, {kRed, 1}}), QSize(100, 60));
    int pixels = 0;
    for (auto const& run : opaquePixels(imageOf(view_, 4), 128)) pixels += run.width;
    return pixels;
  };
  int const circular = covered(view::Corners::circular);
  int const continuous = covered(view::Corners::continuous);
  EXPECT_NE(circular, continuous);
  EXPECT_NEAR(circular, continuous, 400 * 240 / 200) << "a corner of the same radius all the same";
}

TEST_F(ViewTest, ShortensTextsThatDoNotFitAndPaintsNothingBesideThem) {
  show(node(view::HStack{{square(10, kRed), text(std::string(200, 'W')), square(10, kRed)}, 4}), QSize(120, 20));
  auto const& label = the<TextWidget>();
  EXPECT_EQ(label.geometry().left(), 14);
  EXPECT_EQ(label.geometry().width(), 92);
  auto const image = imageOf(view_);
  for (int y = 0; y < image.height(); ++y) {
    for (int const x : {10, 11, 12, 13, 106, 107, 108, 109}) EXPECT_EQ(image.pixelColor(x, y).alpha(), 0) << x;
  }
}

TEST_F(ViewTest, BreaksLinesWhereTheTextSaysSoAndNowhereElse) {
  show(text("Un"));
  double const line = view_.fittingSize().height;
  show(text("Une très longue ligne avec beaucoup de mots\navec Capture One"), QSize(60, 60));
  EXPECT_EQ(view_.fittingSize().height, 2 * line);
}

TEST_F(ViewTest, ShowsControlCharactersAsNothing) {
  show(text("ISO"));
  auto const plain = imageOf(view_);
  show(text(std::string("I\x01S\r\x7FO\x00\xC2\x85", 9)));
  EXPECT_EQ(imageOf(view_), plain);
}

TEST_F(ViewTest, ShowsTextsOfEveryKindInsideTheirPlaces) {
  std::string const longest(10'000, 'x');
  for (std::string const& value :
       {longest, std::string("\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7 \xF0\x9F\x93\xB7"),
        std::string("שלום ISO 400 مرحبا"), std::string("a\xFF\xFEz"), std::string()}) {
    show(node(view::HStack{{text(value)}, 0}), QSize(200, 24));
    EXPECT_LE(the<TextWidget>().geometry().right(), 199);
    EXPECT_FALSE(imageOf(view_).isNull());
  }
}

TEST_F(ViewTest, ShowsAnUnknownSymbolAsNothing) {
  show(node(view::Symbol{"no.such.symbol", {}, {}}));
  EXPECT_EQ(view_.fittingSize(), (Size{0, 0}));
}

TEST_F(ViewTest, ShowsEverySymbolThatViewsName) {
  for (auto const* name : {"exclamationmark.triangle.fill", "questionmark.app", "lock.circle", "lock.circle.fill",
                           "doc.fill", "camera.aperture", "f.cursive.circle", "timer", "camera.fill"}) {
    show(node(view::Symbol{name, {28, view::Weight::regular}, {kRed, 1}}), QSize(40, 40));
    auto const runs = opaquePixels(imageOf(view_), 128);
    ASSERT_FALSE(runs.empty()) << name;
    for (auto const& run : runs) {
      EXPECT_GE(run.x, 3) << name;
      EXPECT_LE(run.x + run.width, 37) << name;
    }
  }
}

TEST_F(ViewTest, CutsSignsOutOfFilledSymbols) {
  for (auto const* name : {"exclamationmark.triangle.fill", "lock.circle.fill", "camera.fill"}) {
    show(node(view::Symbol{name, {80, view::Weight::regular}, {kRed, 1}}));
    auto const image = imageOf(view_);
    int edges = 0;
    for (int x = 1, y = image.height() / 2; x < image.width(); ++x) {
      bool const changes = (image.pixelColor(x, y).alpha() >= 128) != (image.pixelColor(x - 1, y).alpha() >= 128);
      edges += changes ? 1 : 0;
    }
    EXPECT_GE(edges, 4) << name << " is one blot";
  }
}

TEST_F(ViewTest, FillsABannerWithItsBackground) {
  auto const line = [](std::string value, view::Font font) {
    return node(view::Text{std::move(value), font, {view::kWhite, 1}, {}});
  };
  auto banner = node(view::HStack{{node(view::Symbol{"exclamationmark.triangle.fill", {28}, {view::kWhite, 1}}),
                                   node(view::VStack{{line("L'ISO n'est pas : 400", {14, view::Weight::bold}),
                                                      line("ISO détecté : 800", {13, view::Weight::semibold})},
                                                     4,
                                                     view::HorizontalAlignment::leading}),
                                   spacer()},
                                  12})
                    .padded(view::Edges::symmetric(18, 14))
                    .on(view::RoundedRect{14, view::Corners::continuous, {view::SystemColour::red, 1}});
  show(banner, QSize(300, 80));
  for (double const scale : {1.0, 2.0}) {
    auto const image = imageOf(view_, scale);
    auto const at = [&](double x, double y) {
      return image.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
    };
    EXPECT_EQ(at(6, 40), QColor(0xFF, 0x3B, 0x30));
    EXPECT_EQ(at(0.5, 0.5).alpha(), 0) << "the corner is round";
    EXPECT_EQ(at(294, 40), QColor(0xFF, 0x3B, 0x30));
  }
  auto const fitting = view_.fittingSize();
  EXPECT_LE(fitting.width, 300);
  EXPECT_LE(fitting.height, 80);
}

}  // namespace
}  // namespace morla::linux
