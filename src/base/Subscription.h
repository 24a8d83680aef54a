#pragma once

#include <functional>
#include <utility>

namespace morla {

/// Something that lasts until this object goes: an observation, a timer, an event monitor. Main thread.
/// An empty subscription ends nothing; ending twice ends once.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
  Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      end();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  ~Subscription() { end(); }

  void end() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }
  [[nodiscard]] bool isActive() const { return static_cast<bool>(end_); }

 private:
  std::function<void()> end_;
};

}  // namespace morla
