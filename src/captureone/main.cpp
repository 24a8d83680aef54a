#include <QApplication>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QString>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "captureone/EmbeddedDictionary.h"
#include "captureone/control/ControlService.h"
#include "captureone/control/StoredPermission.h"
#include "captureone/permissions/PermissionWatch.h"
#include "captureone/permissions/PrivacyProgram.h"
#include "captureone/pictures/DocumentFolders.h"
#include "captureone/pictures/PictureSource.h"
#include "captureone/pictures/PictureWriter.h"
#include "captureone/processing/Processor.h"
#include "captureone/scripting/EventGate.h"
#include "captureone/scripting/ObjectModel.h"
#include "captureone/window/MainWindow.h"
#include "captureone/window/Style.h"
#include "scriptingbus/ScriptingServer.h"

namespace {

using namespace morla::captureone;
using morla::scriptingbus::ScriptingServer;

enum ExitStatus : int { kDone = 0, kFailure = 1, kUsage = 2 };

constexpr std::string_view kHelp =
    "usage: captureone-sim [--pictures DIR]\n"
    "       captureone-sim --help | --version\n"
    "       captureone-sim --privacy [ADDRESS]\n"
    "\n"
    "A simulated Capture One: a window with documents and a tethered camera, scriptable over the session bus under "
    "the\n"
    "name com.captureone.captureone16. `captureonectl` changes it from outside. Its pictures are those in the folder\n"
    "DIR, or drawn ones; what it processes is written as real files.\n"
    "\n"
    "--privacy shows the desktop's privacy permissions instead: who may control which application, record the screen,\n"
    "follow the keyboard. ADDRESS says on which page: x-apple.systempreferences:com.apple.preference.security?ANCHOR,\n"
    "where ANCHOR is Privacy_Automation, Privacy_ScreenCapture or Privacy_Accessibility.\n"
    "\n"
    "Exit status: 0, 1 when it cannot run or runs already (a page that is open already is shown), 2 wrong usage.\n";

int tell(std::string_view text, std::FILE* stream, ExitStatus status) {
  std::fwrite(text.data(), 1, text.size(), stream);
  return status;
}

int fail(std::string const& why) {
  return tell("captureone-sim: " + why + "\n", stderr, kFailure);
}

bool isSet(char const* variable) {
  auto const* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

/// Takes effect on the next turn of the loop, so that what is being answered gets its answer.
void quitSoon() {
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(kDone); });
}

void after(std::chrono::duration<double> delay, std::function<void()> then) {
  auto const milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay);
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, qApp, std::move(then));
}

/// Nothing for a folder that cannot be read or has no pictures; an empty name means drawn ones.
std::shared_ptr<PictureSet const> picturesOf(QString const& folder) {
  if (folder.isEmpty()) return std::make_shared<PictureSet const>();
  auto set = picturesIn(folder);
  return set && !set->files.empty() ? std::make_shared<PictureSet const>(*std::move(set)) : nullptr;
}

int run(QString const& pictureFolder) {
  ApplicationIdentity const identity;
  auto const pictures = picturesOf(pictureFolder);
  if (pictures == nullptr) return fail(pictureFolder.toStdString() + " is no folder with pictures in it.");
  auto const home = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation).toStdString();
  Model model({home + "/" + identity.name, pictures});
  StoredPermission permission(morla::privacy::PermissionStore::ofUser(), identity.busName);
  Controls controls(model, permission);
  ObjectModel objects(model, identity, kDictionary, {quitSoon});
  EventGate gate(model, [&objects](auto const& event) { return objects.handle(event); },
                 {after, [] { QCoreApplication::exit(kDone); }});

  // The name first: a second copy has nothing to show.
  auto opened = ScriptingServer::open({identity.busName, identity.name, identity.version, std::string(kDictionary)},
                                      [&gate](auto event, auto answer) { gate.handle(event, answer); });
  if (opened.server == nullptr) return fail(opened.failure);

  // The window class is made of the program's and the application's name, and both are to be the real one's.
  std::string name = identity.name;
  char* arguments[] = {name.data(), nullptr};
  int count = 1;
  QApplication application(count, arguments);
  QCoreApplication::setApplicationName(QString::fromStdString(identity.name));
  QCoreApplication::setApplicationVersion(QString::fromStdString(identity.version));
  QGuiApplication::setDesktopFileName(QString::fromStdString(identity.busName));
  style::apply(application);

  DocumentFolders const folders(model);
  PictureWriter writer(pictures);
  Processor const processor(model, {after, [&writer](auto const& job, auto written) { writer.write(job, written); }});
  MainWindow window(model, controls, pictures, QString::fromStdString(identity.name));
  auto const control =
      ControlService::open(opened.server->connection(), controls, {[&window] { window.settle(); }, quitSoon});
  if (control.service == nullptr) return fail(control.failure);
  // Other programs write the store of permissions as well; the window and the control tool follow.
  PermissionWatch const watch(permission.path(), [&controls] { controls.review(); });

  QSocketNotifier bus(opened.server->fileDescriptor(), QSocketNotifier::Read);
  auto const process = [&] {
    if (opened.server->process()) return;
    bus.setEnabled(false);
    std::fputs("captureone-sim: the session bus has gone\n", stderr);
    QCoreApplication::exit(kDone);
  };
  QObject::connect(&bus, &QSocketNotifier::activated, &application, process);
  QTimer::singleShot(0, &application, process);

  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--help") return tell(kHelp, stdout, kDone);
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    return tell("captureone-sim " MORLA_VERSION "\n", stdout, kDone);
  }
  bool const isPrivacy = (argc == 2 || argc == 3) && std::string_view(argv[1]) == "--privacy";
  bool const hasPictures = argc == 3 && std::string_view(argv[1]) == "--pictures" && *argv[2] != '\0';
  if (argc != 1 && !isPrivacy && !hasPictures) return tell(kHelp, stderr, kUsage);
  if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("QT_QPA_PLATFORM")) {
    return fail("There is no display.");
  }
  if (isPrivacy) return runPrivacy(argc == 3 ? argv[2] : "");
  return run(hasPictures ? QString::fromLocal8Bit(argv[2]) : QString());
}
