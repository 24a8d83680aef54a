#include "platform/linux/ui/QtApplication.h"

#include <QApplication>
#include <utility>

#include "base/MainThread.h"

namespace morla::linux {

QtApplication::QtApplication(QtMainLoop& loop) : loop_(loop) {
  // The program lives in the status area: closing its last window ends nothing.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setQuitLockEnabled(false);
}

void QtApplication::setActivationPolicy(platform::ActivationPolicy) {}

int QtApplication::run() {
  assertIsMainThread();
  int const status = isTerminating_ ? 0 : QApplication::exec();
  loop_.end();
  return status;
}

void QtApplication::terminate() {
  assertIsMainThread();
  // Qt forgets a request that comes before its loop runs.
  isTerminating_ = true;
  QApplication::exit(0);
}

void QtApplication::onActionRequest(std::function<platform::ActionOutcome(std::string_view action)> handler) {
  handler_ = std::move(handler);
}

platform::ActionOutcome QtApplication::handleActionRequest(std::string_view action) {
  assertIsMainThread();
  return handler_ ? handler_(action) : platform::ActionOutcome::unavailable;
}

}  // namespace morla::linux
