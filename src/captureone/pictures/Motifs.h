#pragma once

#include <QImage>
#include <QSize>
#include <cstddef>

namespace morla::captureone {

/// Drawn pictures: a handful of motifs in colours that change from picture to picture, so that no two neighbours look
/// alike. The same number always is the same picture. Any thread.
[[nodiscard]] QSize motifExtent(std::size_t picture);
[[nodiscard]] QImage drawMotif(std::size_t picture, QSize size);

}  // namespace morla::captureone
