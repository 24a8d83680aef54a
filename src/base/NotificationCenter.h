#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

#include "base/ObserverList.h"
#include "base/Subscription.h"

namespace morla {

/// The name of a notification; the constants stand in platform/NotificationNames.h.
class NotificationName {
 public:
  constexpr explicit NotificationName(std::string_view text) : text_(text) {}
  [[nodiscard]] constexpr std::string_view text() const { return text_; }
  friend constexpr bool operator==(NotificationName, NotificationName) = default;

 private:
  std::string_view text_;
};

using UserInfo = std::map<std::string, std::variant<bool, std::int64_t, double, std::string>>;

struct Notification {
  NotificationName name;
  UserInfo userInfo;
};

/// Delivers a notification to everyone who asked for its name: synchronously, in order of registration. Main thread.
/// An observer that must act on a later turn posts to the main loop itself.
class NotificationCenter {
 public:
  using Observer = std::function<void(Notification const&)>;

  Subscription addObserver(NotificationName name, Observer observer);
  void post(NotificationName name, UserInfo userInfo = {});

 private:
  std::map<std::string, ObserverList<Notification const&>, std::less<>> observers_;
};

}  // namespace morla
