#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/Subscription.h"

namespace morla {

/// Callbacks in order of registration. Main thread.
/// While a call is under way: an observer that is removed is not called any more, one that is added is first called
/// next time, nested calls are allowed, and the list itself may be destroyed: the call still goes to its end.
template <typename... Arguments>
class ObserverList {
 public:
  using Callback = std::function<void(Arguments...)>;

  Subscription add(Callback callback) {
    auto entry = std::make_shared<Entry>(Entry{std::move(callback), true});
    entries_->push_back(entry);
    return Subscription([entries = std::weak_ptr(entries_), observer = std::weak_ptr(entry)] {
      auto const live = observer.lock();
      if (live == nullptr) return;
      live->isLive = false;
      if (auto const list = entries.lock()) std::erase(*list, live);
    });
  }

  void call(Arguments... arguments) const {
    auto const snapshot = *entries_;
    for (auto const& entry : snapshot) {
      if (entry->isLive) entry->callback(arguments...);
    }
  }

  [[nodiscard]] std::size_t size() const { return entries_->size(); }

 private:
  struct Entry {
    Callback callback;
    bool isLive;
  };
  std::shared_ptr<std::vector<std::shared_ptr<Entry>>> entries_ =
      std::make_shared<std::vector<std::shared_ptr<Entry>>>();
};

}  // namespace morla
