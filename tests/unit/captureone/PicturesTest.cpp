#include <gtest/gtest.h>

#include <string>

#include "captureone/model/Model.h"

/// Pictures, recipes and the queue that turns the one into files with the other.
namespace morla::captureone {
namespace {

std::shared_ptr<PictureSet const> files(std::vector<std::string> paths) {
  return std::make_shared<PictureSet const>(PictureSet{std::move(paths)});
}

TEST(Gallery, DrawnPicturesHaveNamesAndAnImageEach) {
  Gallery gallery(files({}), "/S/Capture");
  ASSERT_TRUE(gallery.setCount(5000));
  auto const last = gallery.at(4999);
  EXPECT_EQ(last.id, "5000");
  EXPECT_EQ(last.image.name, "Atelier_5000");
  EXPECT_EQ(last.image.path, "/S/Capture/Atelier_5000.RAW");
  EXPECT_EQ(gallery.imageCount(), 5000u);
  EXPECT_EQ(gallery.placeOf("5000"), 4999u);
}

TEST(Gallery, MoreVariantsThanFilesAreFurtherVariantsOfTheSameImages) {
  Gallery gallery(files({"/p/a.b.jpg", "/q/.hidden", "/r/plain"}), "/S/Capture");
  ASSERT_TRUE(gallery.setCount(5));
  EXPECT_EQ(gallery.imageCount(), 3u);
  EXPECT_EQ(gallery.at(0).image.name, "a.b");
  EXPECT_EQ(gallery.at(1).image.name, ".hidden");
  EXPECT_EQ(gallery.at(2).image.name, "plain");
  EXPECT_EQ(gallery.at(3).image.id, gallery.at(0).image.id);
  EXPECT_NE(gallery.at(3).id, gallery.at(0).id);
  ASSERT_TRUE(gallery.setCount(2));
  EXPECT_EQ(gallery.imageCount(), 2u);
}

TEST(Gallery, FindsNothingUnderIdsThatNobodyHas) {
  Gallery gallery(files({}), "/S");
  for (auto const* id : {"", "0", "13", "-1", "1 ", "01", "100001", "99999999999999999999999"}) {
    EXPECT_FALSE(gallery.placeOf(id)) << id;
  }
  for (auto const* id : {"", "1", "100000", "100013"}) EXPECT_FALSE(gallery.imagePlaceOf(id)) << id;
  EXPECT_EQ(gallery.imagePlaceOf("100012"), 11u);
}

TEST(Gallery, SaysWhetherASelectionChangedAnything) {
  Gallery gallery(files({}), "/S");
  EXPECT_EQ(gallery.selectedIds(), std::vector<std::string>{"1"});
  EXPECT_FALSE(gallery.setSelected(0, true));
  EXPECT_FALSE(gallery.setSelected(12, true));
  EXPECT_TRUE(gallery.select({3, 1, 50}));
  EXPECT_FALSE(gallery.select({1, 3}));
  EXPECT_EQ(gallery.selectedCount(), 2u);
  EXPECT_TRUE(gallery.selectAll(true));
  EXPECT_FALSE(gallery.selectAll(true));
  EXPECT_FALSE(gallery.setCount(Gallery::kMaximum + 1));
}

TEST(Recipe, ScalesByItsMethodAndUnit) {
  using enum ScalingMethod;
  using enum MeasurementUnit;
  struct Row {
    char const* label;
    ScalingMethod method;
    MeasurementUnit unit;
    double primary;
    double secondary;
    Extent original;
    Extent expected;
  };
  Row const rows[] = {
      {"long edge, landscape", longEdge, pixels, 1024, 0, {6000, 4000}, {1024, 683}},
      {"long edge, portrait", longEdge, pixels, 1024, 0, {4000, 6000}, {683, 1024}},
      {"short edge", shortEdge, pixels, 1000, 0, {6000, 4000}, {1500, 1000}},
      {"width", width, pixels, 600, 0, {6000, 4000}, {600, 400}},
      {"height", height, pixels, 600, 0, {6000, 4000}, {900, 600}},
      {"bounds", boundingDimensions, pixels, 600, 100, {6000, 4000}, {150, 100}},
      {"fixed", fixed, percent, 50, 0, {6000, 4000}, {3000, 2000}},
      {"inches at 300 a piece", longEdge, inches, 2, 0, {6000, 4000}, {600, 400}},
      {"millimeters", longEdge, millimeters, 25.4, 0, {6000, 4000}, {300, 200}},
      {"centimeters", longEdge, centimeters, 2.54, 0, {6000, 4000}, {300, 200}},
      {"percent", longEdge, percent, 10, 0, {6000, 4000}, {600, 400}},
      {"never larger than it is", longEdge, pixels, 9000, 0, {6000, 4000}, {6000, 4000}},
      {"never less than a pixel", longEdge, pixels, 10, 0, {6000, 20}, {10, 1}},
      {"nothing at all", longEdge, pixels, 0, 0, {6000, 4000}, {1, 1}},
      {"a length below nothing means nothing", longEdge, pixels, -5, 0, {6000, 4000}, {6000, 4000}},
      {"what no file can hold", fixed, percent, 100, 0, {131000, 10}, {65500, 5}},
  };
  for (auto const& row : rows) {
    Recipe recipe;
    recipe.scaling = row.method;
    recipe.unit = row.unit;
    recipe.primaryValue = row.primary;
    recipe.secondaryValue = row.secondary;
    auto const extent = scaledExtent(recipe, row.original);
    EXPECT_EQ(extent.width, row.expected.width) << row.label;
    EXPECT_EQ(extent.height, row.expected.height) << row.label;
  }
}

TEST(Recipe, EnlargesOnlyWhenItUpscales) {
  Recipe recipe;
  recipe.scaling = ScalingMethod::longEdge;
  recipe.unit = MeasurementUnit::pixels;
  recipe.primaryValue = 300;
  recipe.upscales = true;
  EXPECT_EQ(scaledExtent(recipe, {100, 50}), (Extent{300, 150}));
  recipe.primaryValue = 1e12;
  EXPECT_EQ(scaledExtent(recipe, {100, 50}), (Extent{65500, 32750}));
}

TEST(RecipeBook, GivesNoHandleTwiceAndLetsNamesBeEqual) {
  RecipeBook book;
  auto const first = book.add("Same").handle;
  auto const second = book.add("Same").handle;
  EXPECT_NE(first, second);
  EXPECT_EQ(book.findNamed("Same")->handle, first);
  EXPECT_TRUE(book.remove(first));
  EXPECT_FALSE(book.remove(first));
  EXPECT_EQ(book.findNamed("Same")->handle, second);
  EXPECT_NE(book.add("Another").handle, first);
}

class QueueTest : public ::testing::Test {
 protected:
  static OutputJob job(std::string document) {
    OutputJob one;
    one.document = std::move(document);
    return one;
  }
  static bool any(OutputJob const&) { return true; }

  Model model_;
  ProcessingQueue& queue_ = model_.queue();
  int changes_ = 0;
  Subscription observer_ = model_.onChange([this] { ++changes_; });
};

TEST_F(QueueTest, IsWorkedOffInOrderAndTellsOfEachStep) {
  queue_.add({job("a"), job("b")});
  EXPECT_EQ(changes_, 1);
  EXPECT_EQ(queue_.length(), 2u);
  auto const first = queue_.next(any)->id;
  EXPECT_EQ(queue_.next(any)->document, "a");
  EXPECT_EQ(queue_.length(), 2u) << "the file that is being written counts";
  queue_.finish(first);
  queue_.finish(first);
  EXPECT_EQ(changes_, 2);
  EXPECT_EQ(queue_.next(any)->document, "b");
  queue_.add({});
  EXPECT_EQ(changes_, 2);
}

TEST_F(QueueTest, RemembersWhatFailedAndGoesOn) {
  queue_.add({job("a"), job("b")});
  queue_.fail(queue_.next(any)->id, "no room");
  queue_.fail("job-99", "nobody's");
  EXPECT_EQ(queue_.length(), 1u);
  ASSERT_EQ(queue_.failures().size(), 1u);
  EXPECT_EQ(queue_.failures()[0].reason, "no room");
  EXPECT_EQ(queue_.failures()[0].job.document, "a");
}

TEST_F(QueueTest, CountsWhatIsDoneUntilItIsAskedForSomethingAnew) {
  queue_.add({job("a"), job("b")});
  EXPECT_EQ(queue_.done(), 0u);
  queue_.finish(queue_.next(any)->id);
  queue_.add({job("c")});
  EXPECT_EQ(queue_.done(), 1u) << "there was still something to do";
  queue_.fail(queue_.next(any)->id, "no room");
  queue_.finish(queue_.next(any)->id);
  EXPECT_EQ(queue_.done(), 3u);
  queue_.add({job("d")});
  EXPECT_EQ(queue_.done(), 0u);
}

TEST_F(QueueTest, AStallOrADocumentThatIsNotReadyHoldsFilesBack) {
  queue_.add({job("a"), job("b")});
  EXPECT_EQ(queue_.next([](OutputJob const& each) { return each.document == "b"; })->document, "b");
  queue_.setStall(ProcessingQueue::Stall::on);
  EXPECT_EQ(queue_.next(any), nullptr);
  EXPECT_EQ(queue_.length(), 2u);
  queue_.setStall(ProcessingQueue::Stall::off);
  EXPECT_NE(queue_.next(any), nullptr);
}

TEST_F(QueueTest, AFileGoesWhereTheRecipeSays) {
  auto const& session = *model_.documents().current();
  Image const image{"100001", "x", "/raws/x.RAW", 0};
  Recipe recipe;
  EXPECT_EQ(outputFolder(session, recipe, image), "/Capture One/Séance 1/Output");
  recipe.subFolder = "Web";
  EXPECT_EQ(outputFolder(session, recipe, image), "/Capture One/Séance 1/Output/Web");
  recipe.rootFolder = RootFolder::imageFolder;
  EXPECT_EQ(outputFolder(session, recipe, image), "/raws/Web");
  recipe.rootFolder = RootFolder::customLocation;
  EXPECT_EQ(outputFolder(session, recipe, image), "/Capture One/Séance 1/Output/Web") << "none has been chosen";
  recipe.rootLocation = "/private/tmp/C1AIRDROP_1";
  recipe.subFolder.clear();
  EXPECT_EQ(outputFolder(session, recipe, image), "/private/tmp/C1AIRDROP_1");
}

TEST_F(QueueTest, OnlyASessionBeginsWithAnOutputFolder) {
  EXPECT_EQ(model_.documents().current()->output, "/Capture One/Séance 1/Output");
  model_.documents().setKind(DocumentKind::catalog);
  EXPECT_EQ(model_.documents().current()->output, "");
  model_.documents().setKind(DocumentKind::session);
  EXPECT_EQ(model_.documents().current()->output, "/Capture One/Séance 1/Output");
}

TEST_F(QueueTest, AChangeInADocumentIsToldWhenThereWasOne) {
  auto const id = model_.documents().current()->id;
  EXPECT_TRUE(model_.documents().change(id, [](Document& document) { return document.gallery.setCount(3); }));
  EXPECT_FALSE(model_.documents().change(id, [](Document& document) { return document.gallery.setCount(3); }));
  EXPECT_FALSE(model_.documents().change("nobody", [](Document&) { return true; }));
  EXPECT_EQ(changes_, 1);
}

}  // namespace
}  // namespace morla::captureone
