#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "base/MainLoop.h"

namespace morla::linux {

/// A main loop on Qt's event loop, and a way to run it until something has happened.
class QtTestLoop final : public MainLoop {
 public:
  void post(std::function<void()> work) override {
    QMetaObject::invokeMethod(&application_, std::move(work), Qt::QueuedConnection);
  }
  Subscription after(Duration delay, std::function<void()> work) override {
    return start(delay, std::move(work), Repetition::once);
  }
  Subscription every(Duration interval, std::function<void()> work) override {
    return start(interval, std::move(work), Repetition::untilEnded);
  }
  [[nodiscard]] TimePoint now() const override { return {std::chrono::steady_clock::now().time_since_epoch()}; }

  /// Runs the loop until `isTrue`, or ten seconds have passed; says which.
  bool runUntil(std::function<bool()> const& isTrue) {
    bool isLate = false;
    auto const limit = after(std::chrono::seconds(10), [&] { isLate = true; });
    while (!isTrue() && !isLate) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isTrue();
  }

  /// Runs everything that is due without waiting for more.
  void runDue() {
    bool hasRun = false;
    post([&] { hasRun = true; });
    while (!hasRun) QCoreApplication::processEvents();
  }

 private:
  enum class Repetition { once, untilEnded };

  static Subscription start(Duration delay, std::function<void()> work, Repetition repetition) {
    auto timer = std::make_shared<QTimer>();
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(repetition == Repetition::once);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [work = std::move(work)] {
      auto const kept = work;  // it may end its own timer
      kept();
    });
    timer->start(std::chrono::ceil<std::chrono::milliseconds>(delay));
    return Subscription([timer] { timer->stop(); });
  }

  int argumentCount_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{argumentCount_, arguments_};
};

}  // namespace morla::linux
