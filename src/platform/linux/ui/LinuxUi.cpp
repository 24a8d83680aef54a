#include "platform/linux/ui/LinuxUi.h"

#include <QGuiApplication>
#include <utility>

#include "base/MainThread.h"

namespace morla::linux {

std::unique_ptr<LinuxUi> LinuxUi::open(std::string& failure) {
  assertIsMainThread();
  if (qGuiApp->nativeInterface<QNativeInterface::QX11Application>() == nullptr) {
    failure = "needs an X11 display (Qt runs on \"" + QGuiApplication::platformName().toStdString() + "\")";
    return nullptr;
  }
  auto loop = std::make_unique<QtMainLoop>();
  auto server = XServer::open(*loop);
  if (server == nullptr) {
    failure = "the X server takes no further connection";
    return nullptr;
  }
  return std::unique_ptr<LinuxUi>(new LinuxUi(std::move(loop), std::move(server)));
}

LinuxUi::LinuxUi(std::unique_ptr<QtMainLoop> loop, std::unique_ptr<XServer> server)
    : loop_(std::move(loop)),
      server_(std::move(server)),
      compositor_(*server_),
      screens_(*loop_),
      stack_(*server_),
      application_(*loop_),
      panels_(services()),
      pointer_(screens_, *server_),
      eventMonitors_(panels_, screens_, pointer_),
      menus_(*loop_, screens_, client_, compositor_),
      statusBar_(services(), *server_, pointer_) {}

LinuxUi::~LinuxUi() = default;

}  // namespace morla::linux
