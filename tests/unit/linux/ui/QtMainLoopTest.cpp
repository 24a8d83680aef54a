#include "platform/linux/ui/QtMainLoop.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QObject>

#include "unit/linux/ui/LoopRunner.h"
#include "unit/platform/MainLoopContract.h"

namespace morla {
namespace {

struct QtHarness {
  MainLoop& loop() { return loop_; }
  bool runUntil(std::function<bool()> isDone) { return linux::runUntil(isDone); }
  void keepBusy(Duration time) {
    auto const end = loop_.now() + time;
    while (loop_.now() < end) {
    }
  }
  void endLoop() { loop_.end(); }

  linux::QtMainLoop loop_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MainLoopContract, QtHarness);

}  // namespace

namespace linux {
namespace {

TEST(QtMainLoop, RunsTheRestInALoopNestedInACallback) {
  QtMainLoop loop;
  bool nestedEnded = false;
  QEventLoop nested;
  loop.post([&] {
    nested.exec();
    nestedEnded = true;
  });
  loop.post([&] { nested.quit(); });
  EXPECT_TRUE(runUntil([&] { return nestedEnded; }));
}

/// Counts the events that this program makes for itself.
class OwnEventCounter : public QObject {
 public:
  OwnEventCounter() { QCoreApplication::instance()->installEventFilter(this); }
  [[nodiscard]] int count() const { return count_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() >= QEvent::User) ++count_;
    return false;
  }

 private:
  int count_ = 0;
};

TEST(QtMainLoop, TakesOneWakeUpForManyPosts) {
  QtMainLoop loop;
  OwnEventCounter const events;
  int runs = 0;
  for (int i = 0; i < 50; ++i) loop.post([&] { ++runs; });
  ASSERT_TRUE(runUntil([&] { return runs == 50; }));
  QCoreApplication::processEvents();
  // One, and one more in case the first callback of the turn had run a loop of its own.
  EXPECT_LE(events.count(), 2);
}

TEST(QtMainLoop, SleepsWhileThereIsNothingToDo) {
  QtMainLoop loop;
  int wakeUps = 0;
  bool isOver = false;
  QObject context;
  auto const far = loop.after(std::chrono::hours(1), [] {});
  loop.post([] {});
  auto const over = loop.after(std::chrono::milliseconds(300), [&] { isOver = true; });
  QCoreApplication::processEvents();
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context,
                   [&] { ++wakeUps; });
  ASSERT_TRUE(runUntil([&] { return isOver; }));
  EXPECT_LE(wakeUps, 5);
}

TEST(QtMainLoop, LetsASubscriptionOutliveIt) {
  Subscription timer;
  {
    QtMainLoop loop;
    timer = loop.after(std::chrono::hours(1), [] {});
  }
  timer.end();
  EXPECT_FALSE(timer.isActive());
}

TEST(QtMainLoop, TakesTheLongestDelayThereIs) {
  QtMainLoop loop;
  bool hasRun = false;
  bool isLater = false;
  auto const never = loop.after(Duration::max(), [&] { hasRun = true; });
  auto const later = loop.after(std::chrono::milliseconds(10), [&] { isLater = true; });
  ASSERT_TRUE(runUntil([&] { return isLater; }));
  EXPECT_FALSE(hasRun);
}

}  // namespace
}  // namespace linux
}  // namespace morla
