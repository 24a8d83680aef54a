#include "base/NotificationCenter.h"

#include <utility>

#include "base/MainThread.h"
#include "base/Trace.h"

namespace morla {
namespace {

void traceNotification(Trace& trace, NotificationName name, UserInfo const& userInfo) {
  std::map<std::string, Json> info;
  for (auto const& [key, value] : userInfo) {
    info.emplace(key, std::visit([](auto const& held) { return Json(held); }, value));
  }
  trace.line({{"notification", Json(name.text())}, {"userInfo", Json(info)}});
}

}  // namespace

Subscription NotificationCenter::addObserver(NotificationName name, Observer observer) {
  assertIsMainThread();
  return observers_[std::string(name.text())].add(std::move(observer));
}

void NotificationCenter::post(NotificationName name, UserInfo userInfo) {
  assertIsMainThread();
  if (auto* trace = Trace::active()) traceNotification(*trace, name, userInfo);
  auto const found = observers_.find(name.text());
  if (found != observers_.end()) found->second.call(Notification{name, std::move(userInfo)});
}

}  // namespace morla
