#pragma once

#include <functional>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/NotificationCenter.h"
#include "platform/Platform.h"

namespace morla::platform {

/// The world of one running program: its platform, its notification centre and its shared objects. The product makes
/// one and never destroys it; a test makes as many as it likes, one at a time. Main thread.
class Environment {
 public:
  /// Active from here to the end of this object; the one that was active before takes over again.
  explicit Environment(Platform platform);
  ~Environment();
  Environment(Environment const&) = delete;
  Environment& operator=(Environment const&) = delete;

  /// Ends the program when there is none: `shared()` was called before start-up.
  [[nodiscard]] static Environment& active();

  [[nodiscard]] Platform& platform() { return platform_; }
  [[nodiscard]] NotificationCenter& notifications() { return notifications_; }

  /// The one `T` of this environment, made by `T::make(Environment&)` on first use. Shared objects end in the reverse
  /// order of their making.
  template <typename T>
  T& shared() {
    auto const found = index_.find(typeid(T));
    if (found != index_.end()) return *static_cast<T*>(found->second);
    std::shared_ptr<T> made = T::make(*this);
    T& object = *made;
    index_.emplace(typeid(T), &object);
    objects_.push_back(std::move(made));
    return object;
  }

 private:
  Platform platform_;
  Environment* previous_;
  NotificationCenter notifications_;
  std::unordered_map<std::type_index, void*> index_;
  std::vector<std::shared_ptr<void>> objects_;
};

}  // namespace morla::platform
