#pragma once

#include <QIcon>

#include "view/Drawing.h"

namespace morla::linux {

/// Drawn anew at every size and resolution that it is asked for.
[[nodiscard]] QIcon makeIcon(view::Drawing const& drawing);

}  // namespace morla::linux
