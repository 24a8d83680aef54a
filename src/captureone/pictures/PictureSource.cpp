#include "captureone/pictures/PictureSource.h"

#include <QDir>
#include <QImageReader>

#include "captureone/pictures/Motifs.h"

namespace morla::captureone {

QSize PictureSource::extent(std::size_t picture) const {
  if (pictures_->files.empty()) return motifExtent(picture);
  QImageReader reader(QString::fromStdString(pictures_->files.at(picture)));
  auto const size = reader.size();
  bool const isTurned = (reader.transformation() & QImageIOHandler::TransformationRotate90) != 0;
  return isTurned ? size.transposed() : size;
}

QImage PictureSource::render(std::size_t picture, QSize size) const {
  if (pictures_->files.empty()) return drawMotif(picture, size);
  QImageReader reader(QString::fromStdString(pictures_->files.at(picture)));
  reader.setAutoTransform(true);
  bool const isTurned = (reader.transformation() & QImageIOHandler::TransformationRotate90) != 0;
  reader.setScaledSize(isTurned ? size.transposed() : size);
  auto image = reader.read();
  if (image.isNull() || image.size() == size) return image;
  return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::optional<PictureSet> picturesIn(QString const& folder) {
  QDir const directory(folder);
  if (!directory.exists() || !directory.isReadable()) return {};
  QStringList patterns;
  for (auto const& each : QImageReader::supportedImageFormats()) {
    patterns += QStringLiteral("*.") + QString::fromLatin1(each);
  }
  PictureSet set;
  for (auto const& each : directory.entryInfoList(patterns, QDir::Files, QDir::Name)) {
    set.files.push_back(each.absoluteFilePath().toStdString());
  }
  return set;
}

}  // namespace morla::captureone
