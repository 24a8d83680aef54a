#pragma once

#include <QPainterPath>
#include <QSizeF>
#include <string>

#include "view/Style.h"

namespace morla::linux {

/// The symbols that views name, drawn here so that all are of one weight and sharp at every scale. In points, at the
/// size that goes with letters of `font`; an unknown name is of no size and has no shape.
[[nodiscard]] QSizeF symbolSize(std::string const& name, view::Font const& font);
/// What is filled, from the top-left corner of the symbol's size.
[[nodiscard]] QPainterPath symbolShape(std::string const& name, view::Font const& font);

}  // namespace morla::linux
