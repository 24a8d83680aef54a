#include "platform/linux/ui/PanelStack.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace morla::linux {

PanelStack::PanelStack(XServer& server)
    : server_(server), desktopDidChange_(server.onDesktopDidChange([this] {
        if (!levels_.empty()) restack();
      })) {}

void PanelStack::didShow(XWindowId panel, int level) {
  levels_[panel] = level;
  // What was in front before stays behind the new panel, whatever its level.
  if (hasNonFloating()) (void)raisedOrActivated(relevantStack());
  restack();
}

void PanelStack::didHide(XWindowId panel) {
  levels_.erase(panel);
}

void PanelStack::restack() {
  auto const stack = relevantStack();
  if (hasNonFloating()) {
    if (auto const front = raisedOrActivated(stack); front != 0) {
      for (auto const panel : panelsToSink(stack, front)) server_.putBelow(panel, front);
    }
  }
  for (auto const panel : panelsToRaise(stack)) server_.raise(panel);
}

bool PanelStack::hasNonFloating() const {
  return std::any_of(levels_.begin(), levels_.end(),
                     [](auto const& panel) { return panel.second < kFirstFloatingLevel; });
}

std::vector<StackedWindow> PanelStack::relevantStack() {
  auto const windows = server_.stack();
  bool const all = hasNonFloating();
  std::vector<StackedWindow> topToBottom;
  std::size_t panelsSeen = 0;
  for (auto window = windows.rbegin(); window != windows.rend() && (all || panelsSeen < levels_.size()); ++window) {
    if (auto const panel = levels_.find(*window); panel != levels_.end()) {
      ++panelsSeen;
      topToBottom.push_back({*window, WindowKind::panel, panel->second});
    } else if (server_.isShownAndManaged(*window)) {
      topToBottom.push_back({*window, WindowKind::managed});
    }
  }
  std::reverse(topToBottom.begin(), topToBottom.end());
  return topToBottom;
}

XWindowId PanelStack::raisedOrActivated(std::vector<StackedWindow> const& bottomToTop) {
  auto const top = std::find_if(bottomToTop.rbegin(), bottomToTop.rend(),
                                [](auto const& window) { return window.kind == WindowKind::managed; });
  auto const topManaged = top == bottomToTop.rend() ? 0 : top->id;
  // While nothing of others is active, what was active last still counts.
  auto const active = server_.activeTopLevel();
  bool const isRaised = topManaged != std::exchange(topManaged_, topManaged);
  bool const isActivated = active != 0 && active != std::exchange(active_, active);
  if (isActivated) return active;
  return isRaised ? topManaged : 0;
}

}  // namespace morla::linux
