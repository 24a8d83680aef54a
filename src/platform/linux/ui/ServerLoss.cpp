#include "platform/linux/ui/ServerLoss.h"

#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <utility>

#include "base/MainThread.h"
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/Xlib.h>

namespace morla::linux {
namespace {

std::function<void()>& leaving() {
  static std::function<void()> leave;
  return leave;
}

QtMessageHandler previousHandler = nullptr;

/// The toolkit has no other sign of it than this warning, after which it calls `exit`.
void handleMessage(QtMsgType type, QMessageLogContext const& context, QString const& message) {
  if (isMainThread() && message.startsWith(QLatin1String("The X11 connection broke"))) leaving()();
  previousHandler(type, context, message);
}

int handleLoss(_XDisplay*) {
  if (isMainThread()) leaving()();
  std::_Exit(EXIT_FAILURE);  // Xlib cannot go on
}

}  // namespace

void onServerLoss(std::function<void()> leave) {
  assertIsMainThread();
  leaving() = std::move(leave);
  previousHandler = qInstallMessageHandler(&handleMessage);
  XSetIOErrorHandler(&handleLoss);
}

}  // namespace morla::linux
