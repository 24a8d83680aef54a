#pragma once

#include <QImage>
#include <QRectF>
#include <vector>

#include "platform/linux/ui/XTypes.h"
#include "view/Drawing.h"

class QPainter;

namespace morla::linux {

/// Fills `area`, in points.
void paintDrawing(QPainter& painter, view::Drawing const& drawing, QRectF const& area);

/// The pixels of an image of format ARGB32, premultiplied or not, whose alpha (0 to 255) is at least `minimumAlpha`, as
/// rows from top to bottom and left to right.
[[nodiscard]] std::vector<PixelRect> opaquePixels(QImage const& image, int minimumAlpha);

}  // namespace morla::linux
