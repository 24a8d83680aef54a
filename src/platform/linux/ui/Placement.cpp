#include "platform/linux/ui/Placement.h"

#include <algorithm>
#include <limits>

namespace morla::linux {
namespace {

/// The nearest start for an extent of `length` between `low` and `high`; where it is too long, `low` counts.
double clampedStart(double start, double length, double low, double high) {
  return std::max(low, std::min(start, high - length));
}

GlobalRect movedInto(GlobalRect rect, GlobalRect const& area) {
  rect.origin.x = clampedStart(rect.origin.x, rect.size.width, area.origin.x, area.origin.x + area.size.width);
  rect.origin.y = clampedStart(rect.origin.y, rect.size.height, area.origin.y, area.origin.y + area.size.height);
  return rect;
}

double squaredDistance(GlobalPoint a, GlobalPoint b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

double areaOf(GlobalRect const& rect) {
  return isEmpty(rect) ? 0 : rect.size.width * rect.size.height;
}

double squaredDistanceTo(GlobalRect const& area, GlobalPoint p) {
  return squaredDistance(p, {std::clamp(p.x, area.origin.x, area.origin.x + area.size.width),
                             std::clamp(p.y, area.origin.y, area.origin.y + area.size.height)});
}

bool holds(GlobalRect const& area, GlobalPoint p) {
  return p.x >= area.origin.x && p.x < area.origin.x + area.size.width && p.y >= area.origin.y &&
         p.y < area.origin.y + area.size.height;
}

using AreaMember = GlobalRect ScreenArea::*;

/// None only when there is no display.
ScreenArea const* screenOf(GlobalPoint p, std::vector<ScreenArea> const& screens, AreaMember member) {
  ScreenArea const* nearest = nullptr;
  double least = std::numeric_limits<double>::infinity();
  for (auto const& screen : screens) {
    if (holds(screen.*member, p)) return &screen;
    if (double const distance = squaredDistanceTo(screen.*member, p); distance < least) {
      least = distance;
      nearest = &screen;
    }
  }
  return nearest;
}

GlobalPoint translated(GlobalPoint p, GlobalPoint from, GlobalPoint to) {
  return {p.x - from.x + to.x, p.y - from.y + to.y};
}

}  // namespace

bool isEmpty(GlobalRect const& rect) {
  return rect.size.width <= 0 || rect.size.height <= 0;
}

GlobalRect intersection(GlobalRect const& a, GlobalRect const& b) {
  double const left = std::max(a.origin.x, b.origin.x);
  double const top = std::max(a.origin.y, b.origin.y);
  double const right = std::min(a.origin.x + a.size.width, b.origin.x + b.size.width);
  double const bottom = std::min(a.origin.y + a.size.height, b.origin.y + b.size.height);
  return {{left, top}, {right - left, bottom - top}};
}

GlobalRect visiblePlace(GlobalRect const& frame, std::vector<ScreenArea> const& screens, Placing placing) {
  if (screens.empty()) return frame;
  auto const shared = [&frame](ScreenArea const& screen) { return areaOf(intersection(frame, screen.inPoints)); };
  auto const most = std::max_element(screens.begin(), screens.end(),
                                     [&](auto const& a, auto const& b) { return shared(a) < shared(b); });
  if (shared(*most) > 0) return placing == Placing::asAsked ? frame : movedInto(frame, most->inPoints);

  auto const way = [&frame](ScreenArea const& screen) {
    return squaredDistance(frame.origin, movedInto(frame, screen.inPoints).origin);
  };
  auto const nearest =
      std::min_element(screens.begin(), screens.end(), [&](auto const& a, auto const& b) { return way(a) < way(b); });
  return movedInto(frame, nearest->inPoints);
}

GlobalPoint pointsToQt(GlobalPoint p, std::vector<ScreenArea> const& screens) {
  auto const* screen = screenOf(p, screens, &ScreenArea::inPoints);
  return screen == nullptr ? p : translated(p, screen->inPoints.origin, screen->inQt.origin);
}

GlobalPoint qtToPoints(GlobalPoint p, std::vector<ScreenArea> const& screens) {
  auto const* screen = screenOf(p, screens, &ScreenArea::inQt);
  return screen == nullptr ? p : translated(p, screen->inQt.origin, screen->inPoints.origin);
}

GlobalRect pointsToQt(GlobalRect const& rect, std::vector<ScreenArea> const& screens) {
  GlobalPoint const centre{rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
  auto const* screen = screenOf(centre, screens, &ScreenArea::inPoints);
  if (screen == nullptr) return rect;
  return {translated(rect.origin, screen->inPoints.origin, screen->inQt.origin), rect.size};
}

}  // namespace morla::linux
