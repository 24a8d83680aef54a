#pragma once

#include <QObject>
#include <QPalette>
#include <QTimer>

#include "base/Lifetime.h"

class QDBusMessage;

namespace morla::linux {

/// Whether the desktop is light or dark, and whether it likes animations, as its portal says. Where there is no portal,
/// or it has no opinion, the toolkit's own palette stays. Views and menus follow the application's palette, which this
/// object keeps. Main thread; one at a time.
class Appearance {
 public:
  Appearance();
  ~Appearance();
  Appearance(Appearance const&) = delete;
  Appearance& operator=(Appearance const&) = delete;

  /// False where the desktop asks for less motion.
  [[nodiscard]] static bool animates();

 private:
  void read();
  void ask(char const* space, char const* key, void (Appearance::*apply)(QVariant const&));
  void applyScheme(QVariant const& value);
  void applyAnimations(QVariant const& value);

  QPalette original_;
  QTimer readSoon_;
  Lifetime life_;
};

}  // namespace morla::linux
