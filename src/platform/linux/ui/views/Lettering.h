#pragma once

#include <QFont>
#include <QString>
#include <string>
#include <vector>

#include "view/Style.h"

namespace morla::linux {

[[nodiscard]] QFont toQt(view::Font const& font);

/// Without the control characters, which some fonts would show as boxes.
[[nodiscard]] QString printable(std::string const& utf8);
/// The same, in the lines that the text itself begins.
[[nodiscard]] std::vector<QString> printableLines(std::string const& utf8);

/// As much of the line as fits into `width` points, with an ellipsis where something is missing.
[[nodiscard]] QString fitted(QString const& line, QFont const& font, double width);
[[nodiscard]] int widthOf(QString const& line, QFont const& font);

}  // namespace morla::linux
