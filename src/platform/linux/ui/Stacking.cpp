#include "platform/linux/ui/Stacking.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace morla::linux {
namespace {

bool floats(StackedWindow const& window) {
  return window.kind == WindowKind::panel && window.level >= kFirstFloatingLevel;
}

/// How high a window may stand: nothing may be above something of a higher rank.
int rankOf(StackedWindow const& window) {
  return floats(window) ? window.level : 0;
}

}  // namespace

std::vector<XWindowId> panelsToRaise(std::vector<StackedWindow> const& bottomToTop) {
  std::vector<StackedWindow> ranked;
  std::copy_if(bottomToTop.begin(), bottomToTop.end(), std::back_inserter(ranked),
               [](auto const& window) { return window.kind != WindowKind::other; });
  auto const byRank = [](auto const& a, auto const& b) { return rankOf(a) < rankOf(b); };
  if (std::is_sorted(ranked.begin(), ranked.end(), byRank)) return {};

  std::map<int, std::vector<XWindowId>> byLevel;
  for (auto const& window : ranked) {
    if (floats(window)) byLevel[window.level].push_back(window.id);
  }
  std::vector<XWindowId> raised;
  for (auto const& [level, panels] : byLevel) raised.insert(raised.end(), panels.begin(), panels.end());
  return raised;
}

std::vector<XWindowId> panelsToSink(std::vector<StackedWindow> const& bottomToTop, XWindowId front) {
  auto const frame =
      std::find_if(bottomToTop.begin(), bottomToTop.end(), [front](auto const& window) { return window.id == front; });
  if (frame == bottomToTop.end()) return {};
  // The lowest first: each one pushes those before it one further down.
  std::vector<XWindowId> sunk;
  for (auto window = frame + 1; window != bottomToTop.end(); ++window) {
    if (window->kind == WindowKind::panel && !floats(*window)) sunk.push_back(window->id);
  }
  return sunk;
}

}  // namespace morla::linux
