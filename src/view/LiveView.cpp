#include "view/LiveView.h"

#include <utility>

namespace morla::view {

LiveView::LiveView(MainLoop& loop, Node shown, std::function<Node()> describe, std::function<void(Node)> show)
    : loop_(loop), shown_(std::move(shown)), describe_(std::move(describe)), show_(std::move(show)) {}

void LiveView::markDirty() {
  if (std::exchange(isDirty_, true)) return;
  loop_.post(life_.weak([this] { redraw(); }));
}

void LiveView::redraw() {
  // Before the description, so that what is announced from here on leads to another one.
  isDirty_ = false;
  auto described = describe_();
  if (described == shown_) return;
  shown_ = described;
  auto const show = show_;
  show(std::move(described));
}

}  // namespace morla::view
