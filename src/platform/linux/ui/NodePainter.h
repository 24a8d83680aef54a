#pragma once

#include <QImage>
#include <QRectF>
#include <vector>

#include "platform/linux/ui/XTypes.h"
#include "view/View.h"

class QPainter;

namespace morla::linux {

/// Views and drawings on a painter of Qt, at the resolution of its device. Sizes and places in points.
[[nodiscard]] Size naturalSize(view::Node const& node);
/// In the middle of `area`, on whole device pixels.
void paintNode(QPainter& painter, view::Node const& node, QRectF const& area);
/// Fills `area`.
void paintDrawing(QPainter& painter, view::Drawing const& drawing, QRectF const& area);

[[nodiscard]] QImage renderNode(view::Node const& node, Size size, double scale);

/// The pixels of an image of format ARGB32, premultiplied or not, whose alpha (0 to 255) is at least `minimumAlpha`, as
/// rows from top to bottom and left to right.
[[nodiscard]] std::vector<PixelRect> opaquePixels(QImage const& image, int minimumAlpha);

}  // namespace morla::linux
