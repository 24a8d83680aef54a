#pragma once

#include <QPainterPath>
#include <QRectF>

#include "view/Style.h"

namespace morla::linux {

/// A rounded rectangle in `area`; the radius is cut down to what fits.
[[nodiscard]] QPainterPath roundedShape(QRectF const& area, double radius, view::Corners corners);

}  // namespace morla::linux
