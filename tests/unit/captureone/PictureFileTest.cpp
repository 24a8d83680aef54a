#include "captureone/pictures/PictureFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <cerrno>
#include <csignal>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "support/TemporaryFolder.h"

namespace morla::captureone {
namespace {

class PictureFileTest : public ::testing::Test {
 protected:
  PictureFileTest() {
    job_.image = {"100001", "Atelier_0001", "/S/Atelier_0001.RAW", 0};
    job_.recipe.scaling = ScalingMethod::longEdge;
    job_.recipe.unit = MeasurementUnit::pixels;
    job_.recipe.primaryValue = 300;
    job_.folder = (folder_ / "out/sub").string();
  }

  std::set<std::string> written() {
    std::set<std::string> names;
    std::error_code error;
    for (auto const& each : std::filesystem::directory_iterator(job_.folder, error)) {
      names.insert(each.path().filename().string());
    }
    return names;
  }
  QString path(std::string const& name) { return QString::fromStdString(job_.folder + "/" + name); }
  std::string head(std::string const& name) { return folder_.read("out/sub/" + name).substr(0, 18); }

  support::TemporaryFolder folder_;
  OutputJob job_;
  PictureSource drawn_{std::make_shared<PictureSet const>()};
};

TEST_F(PictureFileTest, AJpegHasTheSizeTheDensityAndTheProfileOfItsRecipe) {
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  QImage const image(path("Atelier_0001.jpg"));
  EXPECT_EQ(image.size(), QSize(300, 200));
  EXPECT_EQ(image.colorSpace(), QColorSpace(QColorSpace::SRgb));
  using namespace std::string_literals;
  // Start, the segment's length, its name, version 1.1, dots per inch, 300 across, 300 down.
  EXPECT_EQ(head("Atelier_0001.jpg"), "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01\x01\x01\x2C\x01\x2C"s);
}

TEST_F(PictureFileTest, ALowerQualityMakesASmallerFile) {
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  job_.recipe.jpegQuality = 10;
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_LT(std::filesystem::file_size(path("Atelier_0001 1.jpg").toStdString()),
            std::filesystem::file_size(path("Atelier_0001.jpg").toStdString()));
}

TEST_F(PictureFileTest, AFileThatIsThereIsKeptReplacedOrNotMadeAgain) {
  folder_.write("out/sub/Atelier_0001.jpg", "older");
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_EQ(written(), (std::set<std::string>{"Atelier_0001.jpg", "Atelier_0001 1.jpg", "Atelier_0001 2.jpg"}));
  EXPECT_EQ(folder_.read("out/sub/Atelier_0001.jpg"), "older");
  job_.recipe.existingFiles = ExistingFiles::skip;
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_EQ(folder_.read("out/sub/Atelier_0001.jpg"), "older");
  job_.recipe.existingFiles = ExistingFiles::overwrite;
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_EQ(QImage(path("Atelier_0001.jpg")).size(), QSize(300, 200));
  EXPECT_EQ(written().size(), 3u);
}

TEST_F(PictureFileTest, OtherFormatsHaveTheirOwnEnding) {
  job_.recipe.format = FileFormat::jpegQuickProof;
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  job_.recipe.format = FileFormat::png;
  EXPECT_EQ(writePicture(job_, drawn_), std::nullopt);
  EXPECT_EQ(written(), (std::set<std::string>{"Atelier_0001.jpg", "Atelier_0001.png"}));
  EXPECT_EQ(QImageReader::imageFormat(path("Atelier_0001.png")), "png");
}

TEST_F(PictureFileTest, AFolderThatCannotBeMadeIsAReasonAndNoFile) {
  folder_.write("out/sub", "a file in the way");
  auto const failure = writePicture(job_, drawn_);
  ASSERT_TRUE(failure.has_value());
  EXPECT_NE(failure->find(job_.folder), std::string::npos) << *failure;
}

/// Nobody fills a disk for a test: the same comes of a limit on how large files may be.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit const limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(FileSizeLimit const&) = delete;
  FileSizeLimit& operator=(FileSizeLimit const&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int) = nullptr;
};

TEST_F(PictureFileTest, AFileThatDoesNotFitGoesAwayAgain) {
  std::optional<std::string> failure;
  {
    FileSizeLimit const limit(100);
    failure = writePicture(job_, drawn_);
  }
  EXPECT_EQ(failure, std::generic_category().message(EFBIG));
  EXPECT_TRUE(written().empty());
}

TEST_F(PictureFileTest, APictureThatCannotBeReadLeavesNoFile) {
  folder_.write("broken.jpg", "no picture");
  auto const path = (folder_ / "broken.jpg").string();
  PictureSource const source(std::make_shared<PictureSet const>(PictureSet{{path}}));
  job_.image = {"100001", "broken", path, 0};
  EXPECT_EQ(writePicture(job_, source), path + " cannot be read");
  EXPECT_TRUE(written().empty());
}

TEST_F(PictureFileTest, AFolderOfPicturesIsReadByNameWithoutWhatIsNoPicture) {
  QImage picture(40, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  for (auto const* name : {"b.png", "a.jpg", "C.PNG"}) {
    ASSERT_TRUE(picture.save(QString::fromStdString((folder_ / name).string()), nullptr, 95)) << name;
  }
  folder_.write("notes.txt", "x");
  folder_.write("deeper/d.jpg", "x");
  auto const set = picturesIn(QString::fromStdString(folder_.path().string()));
  ASSERT_TRUE(set.has_value());
  ASSERT_EQ(set->files.size(), 3u);
  EXPECT_TRUE(set->files[1].ends_with("/a.jpg") || set->files[0].ends_with("/a.jpg"));
  PictureSource const source(std::make_shared<PictureSet const>(*set));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(source.extent(i), QSize(40, 20));
    auto const small = source.render(i, {10, 5});
    EXPECT_EQ(small.size(), QSize(10, 5));
    EXPECT_GT(qRed(small.pixel(5, 2)), 200);
  }
  EXPECT_FALSE(picturesIn(QStringLiteral("/nowhere/at/all")).has_value());
}

TEST_F(PictureFileTest, ATurnedPictureIsRenderedUpright) {
  QImage picture(40, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  auto const path = (folder_ / "turned.jpg").string();
  QImageWriter writer(QString::fromStdString(path));
  writer.setTransformation(QImageIOHandler::TransformationRotate90);
  ASSERT_TRUE(writer.write(picture));
  PictureSource const source(std::make_shared<PictureSet const>(PictureSet{{path}}));
  EXPECT_EQ(source.extent(0), QSize(20, 40));
  EXPECT_EQ(source.render(0, {10, 20}).size(), QSize(10, 20));
}

TEST_F(PictureFileTest, DrawnPicturesAreTheSameEachTimeAndUnlikeTheirNeighbours) {
  constexpr QSize kThumbnail(48, 48);
  std::vector<QImage> seen;
  for (std::size_t i = 0; i < 24; ++i) {
    auto const image = drawn_.render(i, kThumbnail);
    ASSERT_EQ(image.size(), kThumbnail);
    EXPECT_EQ(image, drawn_.render(i, kThumbnail)) << i;
    for (auto const& other : seen) EXPECT_NE(image, other) << i;
    seen.push_back(image);
    EXPECT_FALSE(drawn_.extent(i).isEmpty());
  }
}

}  // namespace
}  // namespace morla::captureone
