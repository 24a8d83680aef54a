#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>

namespace morla::linux {

/// Runs Qt's event loop, asleep between events, until `isDone`; false when that took longer than any machine needs.
inline bool runUntil(std::function<bool()> const& isDone) {
  bool isTooLate = false;
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, &limit, [&isTooLate] { isTooLate = true; });
  limit.start(std::chrono::seconds(20));
  while (!isDone()) {
    if (isTooLate) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

/// The same for what is seen on the screen, and of the X server: Qt is not told when a compositor has painted or
/// another program got the keyboard, so the condition is looked at again and again.
inline bool runUntilSeen(std::function<bool()> const& isSeen) {
  QTimer glance;
  glance.start(std::chrono::milliseconds(10));
  return runUntil(isSeen);
}

}  // namespace morla::linux
