#pragma once

#include <QColor>
#include <QPalette>

namespace morla::linux {

/// The colours of windows with buttons, in the desktop's light or dark appearance.
struct DialogColours {
  QColor window;
  QColor text;
  QColor faintText;
  QColor control;
  QColor hairline;
  QColor accent;
  QColor pressedAccent;

  [[nodiscard]] static DialogColours of(QPalette const& palette) {
    bool const isDark = palette.color(QPalette::Window).lightness() < 128;
    if (isDark) {
      return {QColor(0x1E, 0x1E, 0x1E), QColor(255, 255, 255, 217), QColor(255, 255, 255, 153),
              QColor(0x2C, 0x2C, 0x2E), QColor(255, 255, 255, 38),  QColor(0x0A, 0x6C, 0xE0),
              QColor(0x08, 0x57, 0xB5)};
    }
    return {QColor(0xEC, 0xEC, 0xEC), QColor(0, 0, 0, 217),     QColor(0, 0, 0, 153),    QColor(Qt::white),
            QColor(0, 0, 0, 38),      QColor(0x00, 0x6A, 0xE0), QColor(0x00, 0x55, 0xB3)};
  }
};

}  // namespace morla::linux
