#pragma once

#include <QObject>
#include <QPointF>
#include <QRect>
#include <vector>

#include "base/Geometry.h"
#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/linux/ui/Placement.h"

class QScreen;

namespace morla::linux {

/// The displays, and the one place where points and Qt's coordinates meet. Main thread.
class Screens {
 public:
  explicit Screens(MainLoop& loop);

  /// The first screen first.
  [[nodiscard]] std::vector<ScreenArea> const& areas() const { return areas_; }
  /// Device pixels in a point, the same all over the desktop.
  [[nodiscard]] double scale() const;

  [[nodiscard]] ScreenFlip flip() const;
  /// Rounded to Qt's whole numbers.
  [[nodiscard]] QRect toQt(GlobalRect const& rect) const;
  [[nodiscard]] QPoint toQt(GlobalPoint point) const;
  [[nodiscard]] GlobalPoint fromQt(QPointF point) const;
  [[nodiscard]] GlobalRect fromQt(QRect const& rect) const;

  /// After displays came, went or changed, once for all the changes of a turn of the loop.
  [[nodiscard]] Subscription onDidChange(std::function<void()> observer) { return didChange_.add(std::move(observer)); }

 private:
  void watch(QScreen* screen);
  void readLater();

  MainLoop& loop_;
  std::vector<ScreenArea> areas_;
  bool isReading_ = false;
  ObserverList<> didChange_;
  QObject connections_;  ///< ends what was connected when it goes
  Lifetime life_;
};

}  // namespace morla::linux
