#include "platform/linux/ui/Screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>
#include <utility>

namespace morla::linux {
namespace {

std::vector<ScreenArea> readAreas() {
  std::vector<ScreenArea> areas;
  for (auto const* screen : QGuiApplication::screens()) {
    QRect const qt = screen->geometry();
    double const scale = screen->devicePixelRatio();
    Size const size{static_cast<double>(qt.width()), static_cast<double>(qt.height())};
    areas.push_back(
        {{{qt.x() / scale, qt.y() / scale}, size}, {{static_cast<double>(qt.x()), static_cast<double>(qt.y())}, size}});
  }
  return areas;
}

int rounded(double value) {
  return static_cast<int>(std::lround(value));
}

}  // namespace

Screens::Screens(MainLoop& loop) : loop_(loop), areas_(readAreas()) {
  for (auto* screen : QGuiApplication::screens()) watch(screen);
  QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &connections_, [this](QScreen* screen) {
    watch(screen);
    readLater();
  });
  QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &connections_, [this] { readLater(); });
  QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &connections_, [this] { readLater(); });
}

double Screens::scale() const {
  auto const* first = QGuiApplication::primaryScreen();
  return first == nullptr ? 1 : first->devicePixelRatio();
}

ScreenFlip Screens::flip() const {
  return ScreenFlip(areas_.empty() ? 0 : areas_.front().inPoints.size.height);
}

QRect Screens::toQt(GlobalRect const& rect) const {
  auto const qt = pointsToQt(rect, areas_);
  return {rounded(qt.origin.x), rounded(qt.origin.y), rounded(qt.size.width), rounded(qt.size.height)};
}

QPoint Screens::toQt(GlobalPoint point) const {
  auto const qt = pointsToQt(point, areas_);
  return {rounded(qt.x), rounded(qt.y)};
}

GlobalPoint Screens::fromQt(QPointF point) const {
  return qtToPoints({point.x(), point.y()}, areas_);
}

GlobalRect Screens::fromQt(QRect const& rect) const {
  return {fromQt(QPointF(rect.topLeft())), {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

void Screens::watch(QScreen* screen) {
  QObject::connect(screen, &QScreen::geometryChanged, &connections_, [this] { readLater(); });
}

void Screens::readLater() {
  if (std::exchange(isReading_, true)) return;
  loop_.post(life_.weak([this] {
    isReading_ = false;
    areas_ = readAreas();
    didChange_.call();
  }));
}

}  // namespace morla::linux
