#pragma once

#include <utility>

namespace morla::applescript {

/// Sets a member for as long as this lives.
template <typename T>
class Scoped {
 public:
  Scoped(T& member, T value) : member_(&member), saved_(std::exchange(member, std::move(value))) {}
  ~Scoped() { *member_ = std::move(saved_); }
  Scoped(Scoped const&) = delete;
  Scoped& operator=(Scoped const&) = delete;

 private:
  T* member_;
  T saved_;
};

}  // namespace morla::applescript
