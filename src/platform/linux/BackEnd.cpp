#include "platform/BackEnd.h"

#include <signal.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/input/QtKeyMonitors.h"
#include "platform/linux/input/X11EventTaps.h"
#include "platform/linux/scripting/BusScriptRunner.h"
#include "platform/linux/scripting/ConsentDesk.h"
#include "platform/linux/scripting/InfoPlist.h"
#include "platform/linux/system/DefaultsCommand.h"
#include "platform/linux/system/DoCommand.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "platform/linux/system/FileWatch.h"
#include "platform/linux/system/InstanceService.h"
#include "platform/linux/system/LinuxOwnBundle.h"
#include "platform/linux/system/StdFiles.h"
#include "platform/linux/system/ThreadedBackgroundWork.h"
#include "platform/linux/system/X11Workspace.h"
#include "platform/linux/ui/ConsentWindow.h"
#include "platform/linux/ui/LinuxUi.h"
#include "platform/linux/ui/ServerLoss.h"
#include "privacy/PermissionStore.h"

namespace morla::linux {
namespace {

/// How long the end of the program may be held up by another program that has the settings locked.
constexpr std::chrono::seconds kPatienceAtTheEnd{1};

/// What must be there before the roles can be made, in the order of making.
struct Desktop {
  std::unique_ptr<QApplication> application;
  std::unique_ptr<LinuxUi> ui;
  std::unique_ptr<BusConnection> bus;
  std::unique_ptr<InstanceService> instance;
  std::unique_ptr<XConnection> x;
};

/// Between the desk and the window, neither of which knows the other.
Subscription showConsentWindow(std::string const& targetName, std::function<void(ConsentDesk::Answer)> answered) {
  return askForConsent(targetName, [answered = std::move(answered)](std::optional<Consent> consent) {
    using Answer = ConsentDesk::Answer;
    answered(!consent ? Answer::none : *consent == Consent::allow ? Answer::allow : Answer::refuse);
  });
}

/// Who taps the keyboard controls the computer, as macOS has it.
bool mayControlTheComputer() {
  return privacy::PermissionStore::ofUser().get(
             {privacy::PermissionQuestion::Service::accessibility, kOwnIdentifier, {}}) == privacy::Permission::allow;
}

class LinuxBackEnd final : public platform::BackEnd {
 public:
  explicit LinuxBackEnd(Desktop desktop)
      : desktop_(std::move(desktop)),
        workspace_(watched(std::move(desktop_.x)), *desktop_.bus, desktop_.ui->mainLoop(), &readBundle) {
    desktop_.instance->setHandler(
        [this](std::string_view action) { return desktop_.ui->application().handleActionRequest(action); });
    onServerLoss([this] { leaveWithoutServer(); });
    QObject::connect(desktop_.application.get(), &QApplication::aboutToQuit, desktop_.application.get(),
                     [this] { defaults_.finish(kPatienceAtTheEnd); });
  }

  [[nodiscard]] platform::Platform platform() override {
    auto& ui = *desktop_.ui;
    return {
        .mainLoop = ui.mainLoop(),
        .background = background_,
        .scripts = scripts_,
        .files = files_,
        .ownBundle = ownBundle_,
        .application = ui.application(),
        .workspace = workspace_,
        .panels = ui.panels(),
        .statusBar = ui.statusBar(),
        .menus = ui.menus(),
        .eventMonitors = ui.eventMonitors(),
        .pointer = ui.pointer(),
        .defaults = defaults_,
        .eventTaps = eventTaps_,
        .keyMonitors = keyMonitors_,
    };
  }

 private:
  std::unique_ptr<XConnection> watched(std::unique_ptr<XConnection> x) {
    x->onLoss([this] { leaveWithoutServer(); });
    return x;
  }

  /// Nothing can be shown any more, and nobody be asked.
  [[noreturn]] void leaveWithoutServer() {
    defaults_.finish(kPatienceAtTheEnd);
    std::fputs("morla: the X server has gone\n", stderr);
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
  }

  Desktop desktop_;
  X11Workspace workspace_;  // first of the roles: it asks the bus who runs, and is answered while the others are made
  FileUserDefaults defaults_{desktop_.ui->mainLoop()};
  StdFiles files_;
  LinuxOwnBundle ownBundle_;
  ConsentDesk consent_{desktop_.ui->mainLoop(), privacy::PermissionStore::ofUser(), &showConsentWindow, &watchFile};
  Subscription userRequests_ = workspace_.onSelfActivated([this] { consent_.forgetClosedQuestions(); });
  ScriptingServices scripting_{Bundles::installed(), privacy::PermissionStore::ofUser(), kOwnIdentifier, &consent_};
  BusScriptRunner scripts_{scripting_};
  ThreadedBackgroundWork background_{desktop_.ui->mainLoop()};
  X11EventTaps eventTaps_{desktop_.ui->mainLoop(), &mayControlTheComputer};
  QtKeyMonitors keyMonitors_{desktop_.ui->mainLoop()};
};

/// Whoever reads our lines may end before we do, which must not end us. With a handler, which a started program does
/// not inherit as it would the ignoring.
void outliveReaders() {
  struct sigaction action{};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  (void)sigaction(SIGPIPE, &action, nullptr);
}

platform::BackEndOrFailure failed(std::string why) {
  return {nullptr, std::move(why)};
}

std::string noDisplay() {
  char const* const name = std::getenv("DISPLAY");
  if (name == nullptr || *name == '\0') return "there is no X display (DISPLAY is not set)";
  return "the X display " + std::string(name) + " cannot be opened";
}

}  // namespace
}  // namespace morla::linux

namespace morla::platform {

std::optional<int> runBackEndCommand(std::vector<std::string> const& arguments) {
  if (arguments.empty()) return std::nullopt;
  std::vector<std::string> const rest(arguments.begin() + 1, arguments.end());
  if (arguments[0] == "defaults") return linux::defaultsCommand(rest);
  if (arguments[0] == "do") return linux::doCommand(rest);
  return std::nullopt;
}

std::string backEndCommandHelp() {
  return '\n' + linux::defaultsCommandHelp() + linux::doCommandHelp();
}

BackEndOrFailure openBackEnd(int& argc, char** argv) {
  using namespace linux;
  outliveReaders();
  // Both are asked for before the toolkit, which takes most of the time to the first picture, and which ends the
  // program itself where there is no display.
  if (!XConnection::canOpen()) return failed(noDisplay());
  auto opened = openSessionBus();
  if (!opened.bus) return failed(opened.failure + ", and MORLA needs one");

  Desktop desktop;
  // Where both are to be had, the toolkit would prefer Wayland, on which no panel stays where it is put.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
  desktop.application = std::make_unique<QApplication>(argc, argv);
  QApplication::setApplicationName(kOwnName);
  std::string failure;
  desktop.ui = LinuxUi::open(failure);
  if (!desktop.ui) return failed(failure);

  auto& loop = desktop.ui->mainLoop();
  desktop.bus = std::make_unique<BusConnection>(std::move(opened.bus), loop);
  desktop.instance = std::make_unique<InstanceService>(*desktop.bus, loop);
  switch (desktop.instance->claim()) {
    case InstanceService::Claim::owned:
      break;
    case InstanceService::Claim::alreadyRunning:
      return failed("MORLA is already running on this desktop");
    case InstanceService::Claim::failed:
      return failed("the session bus does not answer, and MORLA needs it");
  }
  desktop.x = XConnection::open(loop);
  if (!desktop.x) return failed(noDisplay());
  return {std::make_unique<LinuxBackEnd>(std::move(desktop)), {}};
}

}  // namespace morla::platform
