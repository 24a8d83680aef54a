#pragma once

#include <QImage>
#include <QSize>
#include <memory>
#include <optional>

#include "captureone/model/Gallery.h"

namespace morla::captureone {

/// The pictures of a set as pixels: read from their files, or drawn. Any thread.
class PictureSource {
 public:
  explicit PictureSource(std::shared_ptr<PictureSet const> pictures) : pictures_(std::move(pictures)) {}

  /// In pixels, as a person looks at the picture; empty when its file cannot be read.
  [[nodiscard]] QSize extent(std::size_t picture) const;

  /// The picture in exactly that size; null when its file cannot be read. A file is decoded small where its format
  /// allows that, a drawing is drawn small, so a thumbnail costs little.
  [[nodiscard]] QImage render(std::size_t picture, QSize size) const;

 private:
  std::shared_ptr<PictureSet const> pictures_;
};

/// The pictures in a folder, by name, without those in its subfolders; nothing when the folder cannot be read.
[[nodiscard]] std::optional<PictureSet> picturesIn(QString const& folder);

}  // namespace morla::captureone
