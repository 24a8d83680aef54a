#include "captureone/permissions/PrivacyProgram.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "captureone/permissions/PermissionWatch.h"
#include "captureone/permissions/SettingsInstance.h"
#include "captureone/window/PrivacyWindow.h"
#include "captureone/window/Style.h"

namespace morla::captureone {

int runPrivacy(std::string const& address) {
  auto const claimed = SettingsInstance::claim(address);
  if (claimed.claim == SettingsInstance::Claim::handedOver) return EXIT_SUCCESS;
  if (claimed.claim == SettingsInstance::Claim::failed) {
    std::fprintf(stderr, "captureone-sim: %s\n", claimed.failure.c_str());
    return EXIT_FAILURE;
  }
  auto& instance = *claimed.instance;

  // The window class is made of the program's and the application's name; by it the .desktop file is found.
  std::string name = kSettingsIdentifier;
  char* arguments[] = {name.data(), nullptr};
  int count = 1;
  QApplication application(count, arguments);
  QCoreApplication::setApplicationName(QString::fromLatin1(kSettingsIdentifier));
  QGuiApplication::setDesktopFileName(QString::fromLatin1(kSettingsIdentifier));
  style::apply(application);

  auto const store = privacy::PermissionStore::ofUser();
  PrivacyWindow window(store);
  PermissionWatch const watch(store.path(), [&window] { window.refresh(); });
  instance.onOpen([&window](std::string const& opened) {
    if (!opened.empty()) window.show(pageAt(opened));
    window.present();
  });
  QSocketNotifier bus(instance.fileDescriptor(), QSocketNotifier::Read);
  auto const process = [&] {
    if (instance.process()) return;
    bus.setEnabled(false);
    std::fputs("captureone-sim: the session bus has gone\n", stderr);
    QCoreApplication::exit(EXIT_SUCCESS);
  };
  QObject::connect(&bus, &QSocketNotifier::activated, &application, process);
  QTimer::singleShot(0, &application, process);

  window.show(pageAt(address));
  window.present();
  return QApplication::exec();
}

}  // namespace morla::captureone
