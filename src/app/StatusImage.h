#pragma once

#include "view/Drawing.h"

namespace morla::app {

/// The status item's image: a black disc with a small window of four panes, 18 x 18 points.
[[nodiscard]] view::Drawing statusImage();

}  // namespace morla::app
