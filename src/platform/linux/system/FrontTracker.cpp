#include "platform/linux/system/FrontTracker.h"

namespace morla::linux {

void FrontTracker::activeWindowIs(std::optional<Window> const& window) {
  // Window managers repeat themselves, and confirm late what the focus has told: neither is an event.
  auto const before = active_;
  active_ = window ? window->id : 0;
  bool const isNews = window && window->id != before && !(focused_ && focused_->id == window->id);
  if (isNews) bringToFront(*window);
}

void FrontTracker::focusEntered(Window const& window) {
  focused_ = window;
  bringToFront(window);
}

void FrontTracker::focusLeft(WindowId window) {
  if (focused_ && focused_->id == window) focused_.reset();
}

void FrontTracker::windowVanished(WindowId window) {
  focusLeft(window);
  if (active_ == window) active_ = 0;
  std::erase_if(lastFocused_, [window](auto const& entry) { return entry.second == window; });
}

std::optional<FrontTracker::WindowId> FrontTracker::lastFocused(WindowOwner const& owner) const {
  auto const found = lastFocused_.find(owner);
  if (found == lastFocused_.end()) return std::nullopt;
  return found->second;
}

void FrontTracker::bringToFront(Window const& window) {
  if (window.owner == self_) return;
  lastFocused_.insert_or_assign(window.owner, window.id);
  front_ = window.owner;
}

}  // namespace morla::linux
