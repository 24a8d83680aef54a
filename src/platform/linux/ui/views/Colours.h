#pragma once

#include <QColor>

#include "view/Style.h"

class QPalette;

namespace morla::linux {

/// The desktop's appearance, as the palette of the toolkit has it.
[[nodiscard]] bool isDark(QPalette const& palette);

[[nodiscard]] QColor toQt(view::Colour const& colour);
[[nodiscard]] QColor toQt(view::SystemColour colour, QPalette const& palette);
[[nodiscard]] QColor toQt(view::Paint const& paint, QPalette const& palette);

/// The same colour, `opacity` (0 to 1) of it.
[[nodiscard]] QColor faded(QColor colour, double opacity);

/// A palette of these colours for the toolkit's own widgets.
[[nodiscard]] QPalette standardPalette(bool isDark);

}  // namespace morla::linux
