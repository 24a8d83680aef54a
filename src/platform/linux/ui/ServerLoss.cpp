#include "platform/linux/ui/ServerLoss.h"

#include <QGuiApplication>
#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <utility>

#include "base/MainThread.h"
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/Xlib.h>
#include <xcb/xcb.h>

namespace morla::linux {
namespace {

std::function<void()>& leaving() {
  static std::function<void()> leave;
  return leave;
}

QtMessageHandler previousHandler = nullptr;

bool isServerLost() {
  auto* const application =
      qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application != nullptr && application->connection() != nullptr &&
         xcb_connection_has_error(application->connection()) != 0;
}

/// The toolkit has no other sign of it than its warnings: that the connection broke, after which it calls `exit`, or
/// before that, when it was just drawing, that something failed.
void handleMessage(QtMsgType type, QMessageLogContext const& context, QString const& message) {
  if (isMainThread() && isServerLost()) leaving()();
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
