#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "platform/linux/ui/DrawingIcon.h"
#include "platform/linux/ui/DrawingPainter.h"

namespace morla::linux {
namespace {

using testing::ElementsAre;

constexpr view::Colour kRed{1, 0, 0, 1};
constexpr view::Colour kBlue{0, 0, 1, 1};

view::Drawing square(double side, view::Colour colour) {
  return {{side, side}, {view::FillRoundedRect{{{0, 0}, {side, side}}, 0, colour}}};
}

QImage painted(view::Drawing const& drawing, QSize size, double scale) {
  QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  paintDrawing(painter, drawing, QRectF(QPointF(0, 0), size));
  return image;
}

TEST(DrawingPainter, DrawsUpwardsFromTheBottomLeft) {
  view::Drawing const drawing{{10, 10}, {view::FillRoundedRect{{{0, 0}, {10, 2}}, 0, kRed}}};
  auto const image = painted(drawing, {10, 10}, 1);
  EXPECT_EQ(image.pixelColor(5, 9), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(5, 8), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(5, 7).alpha(), 0);
}

TEST(DrawingPainter, DrawsAtTheResolutionOfTheDevice) {
  view::Drawing const line{{4, 4}, {view::StrokeLine{{1.75, 0}, {1.75, 4}, 0.5, kRed}}};
  auto const image = painted(line, {4, 4}, 2);
  ASSERT_EQ(image.size(), QSize(8, 8));
  EXPECT_EQ(image.pixelColor(2, 4).alpha(), 0);
  EXPECT_EQ(image.pixelColor(3, 4), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(4, 4).alpha(), 0);
}

TEST(OpaquePixels, AreTheRunsOfEachRow) {
  QImage image(6, 3, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  image.setPixelColor(0, 0, QColor(0, 0, 0, 255));
  image.setPixelColor(4, 0, QColor(0, 0, 0, 200));
  image.setPixelColor(5, 0, QColor(0, 0, 0, 128));
  image.setPixelColor(2, 2, QColor(0, 0, 0, 127));
  EXPECT_THAT(opaquePixels(image, 128), ElementsAre(PixelRect{0, 0, 1, 1}, PixelRect{4, 0, 2, 1}));
  EXPECT_THAT(opaquePixels(image, 1), ElementsAre(PixelRect{0, 0, 1, 1}, PixelRect{4, 0, 2, 1}, PixelRect{2, 2, 1, 1}));
}

TEST(DrawingIcon, IsDrawnAnewAtEverySize) {
  // Two halves with a sharp border, which scaling a picture would blur.
  view::Drawing const halves{
      {18, 18},
      {view::FillRoundedRect{{{0, 0}, {9, 18}}, 0, kRed}, view::FillRoundedRect{{{9, 0}, {9, 18}}, 0, kBlue}}};
  auto const icon = makeIcon(halves);
  for (int const side : {18, 24, 36, 54}) {
    auto const image = icon.pixmap(QSize(side, side), 1.0).toImage();
    ASSERT_EQ(image.size(), QSize(side, side));
    EXPECT_EQ(image.pixelColor(side / 2 - 1, 5), QColor(Qt::red)) << side;
    EXPECT_EQ(image.pixelColor(side / 2, 5), QColor(Qt::blue)) << side;
  }
}

TEST(DrawingIcon, KeepsItsFormInAnOblongPlace) {
  QImage image(40, 20, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    makeIcon(square(18, kRed)).paint(&painter, image.rect());
  }
  EXPECT_EQ(image.pixelColor(9, 10).alpha(), 0);
  EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(29, 10), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(30, 10).alpha(), 0);
}

}  // namespace
}  // namespace morla::linux
