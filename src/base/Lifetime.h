#pragma once

#include <memory>
#include <utility>

namespace morla {

/// Tells closures and coroutines whether their owner still lives. Make it the *last* member, so that it ends first.
/// Main thread.
class Lifetime {
 public:
  /// What a coroutine keeps across its suspensions: true while the owner lives.
  class Reference {
   public:
    explicit Reference(std::weak_ptr<char> alive) : alive_(std::move(alive)) {}
    explicit operator bool() const { return !alive_.expired(); }

   private:
    std::weak_ptr<char> alive_;
  };

  Lifetime() = default;
  Lifetime(Lifetime const&) = delete;
  Lifetime& operator=(Lifetime const&) = delete;

  [[nodiscard]] Reference reference() const { return Reference(alive_); }

  /// `function` while the owner lives, nothing afterwards.
  template <typename Function>
  [[nodiscard]] auto weak(Function function) const {
    return [alive = reference(), function = std::move(function)](auto&&... arguments) mutable {
      if (alive) function(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace morla
