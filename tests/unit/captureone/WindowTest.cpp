// Pictures in the simulator's window, and how the window as a whole follows.

#include <QApplication>
#include <QComboBox>
#include <algorithm>
#include <map>

#include "WindowFixture.h"

namespace morla::captureone {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Counts how often each widget is drawn.
class PaintCounter final : public QObject {
 public:
  PaintCounter() { qApp->installEventFilter(this); }
  int operator[](QObject const* widget) { return counts_[widget]; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++counts_[watched];
    return false;
  }

 private:
  std::map<QObject const*, int> counts_;
};

TEST_F(WindowTest, AClickSelectsOnePictureAndAClickBesideThemNone) {
  click(2);
  EXPECT_THAT(selected(), ElementsAre("3"));
  EXPECT_TRUE(says("1 sur 12 sélectionnée"));
  click(4);
  EXPECT_THAT(selected(), ElementsAre("5"));
  change([](Document& document) { return document.gallery.setCount(1); });
  window_.settle();
  QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {}, grid_->viewport()->rect().bottomRight() - QPoint(5, 5));
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_TRUE(says("0 sur 1 sélectionnée"));
}

TEST_F(WindowTest, AClickWithControlTogglesAndWithShiftSelectsARange) {
  click(1);
  click(4, Qt::ControlModifier);
  click(2, Qt::ControlModifier);
  EXPECT_THAT(selected(), ElementsAre("2", "3", "5"));
  EXPECT_TRUE(says("3 sur 12 sélectionnées"));
  click(4, Qt::ControlModifier);
  EXPECT_THAT(selected(), ElementsAre("2", "3"));
  click(1);
  click(5, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre("2", "3", "4", "5", "6"));
  click(0, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre("1", "2")) << "a range begins where the last simple click was";
}

TEST_F(WindowTest, KeysSelectAsTheMouseDoes) {
  click(0);
  QTest::keyClick(grid_, Qt::Key_Right);
  EXPECT_THAT(selected(), ElementsAre("2"));
  QTest::keyClick(grid_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre("2", "3"));
  QTest::keyClick(grid_, Qt::Key_Home);
  EXPECT_THAT(selected(), ElementsAre("1"));
  QTest::keyClick(grid_, Qt::Key_Down);
  ASSERT_THAT(selected(), SizeIs(1));
  int const below = std::stoi(selected()[0]) - 1;
  EXPECT_EQ(centre(grid_, below).x(), centre(grid_, 0).x());
  EXPECT_GT(centre(grid_, below).y(), centre(grid_, 0).y());
  QTest::keyClick(grid_, Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(selected(), SizeIs(12));
  EXPECT_TRUE(says("12 sur 12 sélectionnées"));
}

TEST_F(WindowTest, ARubberBandSelectsWhatItTouches) {
  // From the gap at the right of the last picture of the second row to the first picture of the first one.
  change([](Document& document) { return document.gallery.setCount(2); });
  window_.settle();
  QPoint const from(grid_->viewport()->width() - 2, centre(grid_, 1).y() + 4);
  QTest::mousePress(grid_->viewport(), Qt::LeftButton, {}, from);
  QTest::mouseMove(grid_->viewport(), centre(grid_, 1) + QPoint(8, 0));
  QTest::mouseMove(grid_->viewport(), centre(grid_, 1));
  EXPECT_THAT(selected(), ElementsAre("2"));
  QTest::mouseMove(grid_->viewport(), centre(grid_, 0));
  QTest::mouseRelease(grid_->viewport(), Qt::LeftButton, {}, centre(grid_, 0));
  EXPECT_THAT(selected(), ElementsAre("1", "2"));
}

TEST_F(WindowTest, FollowsWhatOthersSelect) {
  ASSERT_FALSE(controls_.set("variants.selected", "2|3|7"));
  EXPECT_THAT(selectedInWindow(), ElementsAre("Atelier_0002", "Atelier_0003", "Atelier_0007"));
  EXPECT_TRUE(says("3 sur 12 sélectionnées"));
  // Keys go on from there.
  QTest::keyClick(grid_, Qt::Key_Right);
  EXPECT_THAT(selected(), ElementsAre("3"));
  ASSERT_FALSE(controls_.set("variants.count", "2"));
  EXPECT_THAT(selectedInWindow(), IsEmpty());
  ASSERT_FALSE(controls_.set("variants.count", "3"));
  EXPECT_THAT(selectedInWindow(), IsEmpty()) << "pictures that come back are new ones";
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(WindowTest, SelectsTheRightOnesInACollectionThatHoldsOnlySome) {
  ASSERT_FALSE(controls_.set("variants.selected", "2|4"));
  change([](Document& document) { return document.gallery.setCurrentCollection("13"); });
  window_.settle();
  EXPECT_EQ(grid_->model()->rowCount(), 4);
  EXPECT_THAT(selectedInWindow(), ElementsAre("Atelier_0004"));
  EXPECT_TRUE(says("1 sur 4 sélectionnée, 1 ailleurs"));
  EXPECT_THAT(selected(), ElementsAre("2", "4")) << "looking at a collection selects nothing";
  click(3);
  EXPECT_THAT(selected(), ElementsAre("10"));
}

TEST_F(WindowTest, EachDocumentKeepsItsSelection) {
  click(5);
  model_.documents().open(DocumentKind::catalog);
  window_.settle();
  EXPECT_THAT(selectedInWindow(), ElementsAre("Atelier_0001"));
  click(1);
  model_.documents().makeCurrent(model_.documents().all().front().id);
  EXPECT_THAT(selectedInWindow(), ElementsAre("Atelier_0006"));
  EXPECT_THAT(selected(), ElementsAre("6"));
  EXPECT_THAT(model_.documents().all().back().gallery.selectedIds(), ElementsAre("2"));
}

TEST_F(WindowTest, ShowsThePictures) {
  auto const hasPicture = [this] {
    auto const shown = grid_->viewport()->grab().toImage();
    auto const colour = shown.pixelColor(centre(grid_, 0) * shown.devicePixelRatio());
    return colour.saturation() > 40;  // the cell and what stands for a picture are grey
  };
  EXPECT_TRUE(QTest::qWaitFor(hasPicture, 60'000));
}

TEST_F(WindowTest, MakesThumbnailsOnlyOfWhatIsLookedAtAndKeepsFewEnough) {
  ASSERT_FALSE(controls_.set("variants.count", "5000"));
  auto const& thumbnails = grid_->thumbnails();
  EXPECT_TRUE(QTest::qWaitFor([&] { return thumbnails.kept() > 0 && !thumbnails.isBusy(); }, 60'000));
  EXPECT_LT(thumbnails.kept(), Thumbnails::budget() / 10) << "far fewer than 5,000";
}

TEST_F(WindowTest, TheKeepingOfThumbnailsIsBounded) {
  constexpr int kEdge = 512;
  Thumbnails thumbnails(pictures_, [](std::size_t) {});
  for (std::size_t picture = 0; picture < 120; ++picture) {
    if (!thumbnails.find(picture, kEdge)) {
      ASSERT_TRUE(QTest::qWaitFor([&] { return !thumbnails.isBusy(); }, 60'000));
    }
  }
  EXPECT_LE(thumbnails.kept(), Thumbnails::budget());
  EXPECT_GT(thumbnails.kept(), Thumbnails::budget() / 2);
  auto const last = thumbnails.find(119, kEdge);
  ASSERT_TRUE(last);
  EXPECT_EQ(std::max(last->width(), last->height()), kEdge);
}

TEST_F(WindowTest, SaysThatAPictureCannotBeRead) {
  auto const broken = std::make_shared<PictureSet const>(PictureSet{{"/nowhere/a.jpg"}});
  Thumbnails thumbnails(broken, [](std::size_t) {});
  EXPECT_FALSE(thumbnails.find(0, 64));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !thumbnails.isBusy(); }, 60'000));
  auto const found = thumbnails.find(0, 64);
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->isNull());
}

TEST_F(WindowTest, OnlyWhatHasChangedIsDrawnAnew) {
  auto const& thumbnails = grid_->thumbnails();
  ASSERT_TRUE(QTest::qWaitFor([&] { return thumbnails.kept() > 0 && !thumbnails.isBusy(); }, 60'000));
  QCoreApplication::processEvents();
  PaintCounter paints;
  auto const* recipes = find<QListView>("Recettes")->viewport();
  ASSERT_FALSE(controls_.set("camera.iso", "3200"));
  window_.settle();
  EXPECT_GT(paints[find<QComboBox>("ISO")], 0) << "it is drawn when the key has been set";
  EXPECT_EQ(paints[find<QComboBox>("Ouverture")], 0);
  EXPECT_EQ(paints[grid_->viewport()], 0);
  EXPECT_EQ(paints[recipes], 0);
  ASSERT_FALSE(controls_.set("variants.selected", "4"));
  window_.settle();
  EXPECT_GT(paints[grid_->viewport()], 0);
  EXPECT_EQ(paints[recipes], 0);
  int const drawn = paints[grid_->viewport()];
  for (int i = 0; i < 50; ++i) (void)model_.faults().nextEvent();
  window_.settle();
  EXPECT_TRUE(says("50 événements reçus"));
  EXPECT_EQ(paints[grid_->viewport()], drawn);
  EXPECT_EQ(paints[recipes], 0);
}

TEST_F(WindowTest, StaysWholeWithoutAnyDocument) {
  ASSERT_FALSE(controls_.set("document.open", "0"));
  window_.settle();
  EXPECT_TRUE(says("Aucun document ouvert"));
  EXPECT_FALSE(grid_->isVisible());
  ASSERT_FALSE(controls_.set("document.open", "1"));
  window_.settle();
  EXPECT_TRUE(grid_->isVisible());
  EXPECT_THAT(selectedInWindow(), SizeIs(1));
}

}  // namespace
}  // namespace morla::captureone
