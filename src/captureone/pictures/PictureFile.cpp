#include "captureone/pictures/PictureFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

namespace morla::captureone {
namespace {

constexpr mode_t kPermissions = 0644;

std::string reasonOf(int error) {
  return std::generic_category().message(error);
}

char const* extensionOf(FileFormat format) {
  switch (format) {
    case FileFormat::jpeg:
    case FileFormat::jpegQuickProof:
      return "jpg";
    case FileFormat::tiff:
      return "tif";
    case FileFormat::png:
      return "png";
  }
  return "";
}

/// An open new file that goes away again unless it is kept.
class NewFile {
 public:
  NewFile(std::string path, int descriptor) : path_(std::move(path)), descriptor_(descriptor) {}
  NewFile(NewFile&& other) noexcept
      : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)) {}
  NewFile(NewFile const&) = delete;
  NewFile& operator=(NewFile const&) = delete;
  ~NewFile() {
    if (descriptor_ < 0) return;
    ::close(descriptor_);
    ::unlink(path_.c_str());
  }

  /// 0, or an errno.
  [[nodiscard]] int fill(QByteArray const& content) {
    auto const* bytes = content.constData();
    auto left = static_cast<std::size_t>(content.size());
    while (left > 0) {
      auto const count = ::write(descriptor_, bytes, left);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return errno;
      bytes += count;
      left -= static_cast<std::size_t>(count);
    }
    // A full disk may be told of at the end only; the descriptor is gone either way.
    int const result = ::close(std::exchange(descriptor_, -1)) == 0 ? 0 : errno;
    if (result != 0) ::unlink(path_.c_str());
    return result;
  }

 private:
  std::string path_;
  int descriptor_;
};

struct Skipped {};
using Opened = std::variant<NewFile, Skipped, std::string>;

Opened openFile(OutputJob const& job) {
  std::string const stem = job.folder + "/" + job.image.name;
  std::string const extension = std::string(".") + extensionOf(job.recipe.format);
  bool const overwrites = job.recipe.existingFiles == ExistingFiles::overwrite;
  int const flags = O_WRONLY | O_CREAT | O_CLOEXEC | (overwrites ? O_TRUNC : O_EXCL);
  for (std::size_t suffix = 0;; ++suffix) {
    auto path = stem + (suffix == 0 ? "" : " " + std::to_string(suffix)) + extension;
    int const descriptor = ::open(path.c_str(), flags, kPermissions);
    if (descriptor >= 0) return NewFile(std::move(path), descriptor);
    if (errno != EEXIST) return reasonOf(errno);
    if (job.recipe.existingFiles == ExistingFiles::skip) return Skipped{};
  }
}

/// Says in the file's head that it has so many pixels to the inch. Only whole centimeters can be asked of the library,
/// and 300 to the inch are no whole number of those.
void setDensity(QByteArray& jpeg, double pixelsPerInch) {
  constexpr char kHead[] = "JFIF";
  constexpr qsizetype kHeadAt = 6;
  constexpr qsizetype kUnitAt = 13;
  if (jpeg.size() < 18 || jpeg.mid(kHeadAt, 5) != QByteArray(kHead, 5)) return;
  auto const density = static_cast<unsigned>(std::clamp(std::round(pixelsPerInch), 1.0, 65535.0));
  jpeg[kUnitAt] = 1;
  for (qsizetype const at : {kUnitAt + 1, kUnitAt + 3}) {
    jpeg[at] = static_cast<char>(density >> 8U);
    jpeg[at + 1] = static_cast<char>(density & 0xFFU);
  }
}

std::variant<QByteArray, std::string> encoded(OutputJob const& job, PictureSource const& source) {
  auto const original = source.extent(job.image.picture);
  if (original.isEmpty()) return job.image.path + " cannot be read";
  auto const size = scaledExtent(
      job.recipe, {static_cast<std::size_t>(original.width()), static_cast<std::size_t>(original.height())});
  auto image = source.render(job.image.picture, {static_cast<int>(size.width), static_cast<int>(size.height)});
  if (image.isNull()) return job.image.path + " cannot be read";
  if (job.recipe.colorProfile.starts_with("sRGB")) image.convertToColorSpace(QColorSpace::SRgb);

  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, extensionOf(job.recipe.format));
  bool const isJpeg = job.recipe.format == FileFormat::jpeg || job.recipe.format == FileFormat::jpegQuickProof;
  if (isJpeg) writer.setQuality(static_cast<int>(job.recipe.jpegQuality));
  constexpr double kInchesPerMeter = 39.3700787;
  int const dotsPerMeter = static_cast<int>(std::min(job.recipe.pixelsPerInch * kInchesPerMeter, 1e9));
  image.setDotsPerMeterX(dotsPerMeter);
  image.setDotsPerMeterY(dotsPerMeter);
  if (!writer.write(image)) return writer.errorString().toStdString();
  if (isJpeg) setDensity(bytes, job.recipe.pixelsPerInch);
  return bytes;
}

}  // namespace

std::optional<std::string> writePicture(OutputJob const& job, PictureSource const& source) {
  std::error_code error;
  std::filesystem::create_directories(job.folder, error);
  if (error) return job.folder + ": " + error.message();
  auto opened = openFile(job);
  if (auto* reason = std::get_if<std::string>(&opened)) return *std::move(reason);
  auto* file = std::get_if<NewFile>(&opened);
  if (file == nullptr) return {};
  auto const content = encoded(job, source);
  if (auto const* reason = std::get_if<std::string>(&content)) return *reason;
  int const failed = file->fill(std::get<QByteArray>(content));
  if (failed != 0) return reasonOf(failed);
  return {};
}

}  // namespace morla::captureone
