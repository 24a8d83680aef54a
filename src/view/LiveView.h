#pragma once

#include <functional>
#include <vector>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/Published.h"
#include "base/Subscription.h"
#include "view/View.h"

namespace morla::view {

/// Keeps on show what a function of state describes. An announcement of a value that the function reads marks the view
/// dirty; on the next turn of the loop, when everything announced meanwhile is stored, a dirty view is described once,
/// and shown if it has become another one. Main thread.
class LiveView {
 public:
  /// `shown` is what is on show from the start. `show` may end this object.
  LiveView(MainLoop& loop, Node shown, std::function<Node()> describe, std::function<void(Node)> show);

  /// The described tree depends on `value`, which may end before this object.
  template <typename T>
  void reads(Published<T> const& value) {
    observations_.push_back(value.willChange([this](T const&) { markDirty(); }));
  }

 private:
  void markDirty();
  void redraw();

  MainLoop& loop_;
  Node shown_;
  std::function<Node()> describe_;
  std::function<void(Node)> show_;
  bool isDirty_ = false;
  std::vector<Subscription> observations_;
  Lifetime life_;
};

}  // namespace morla::view
