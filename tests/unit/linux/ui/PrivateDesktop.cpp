#include "unit/linux/ui/PrivateDesktop.h"

#include <X11/Xlib.h>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <utility>

namespace morla::linux {
namespace {

using support::ChildProcess;
using support::FileDescriptor;
using support::ReportingProcess;

constexpr std::chrono::seconds kStartLimit{10};

/// Where the children say what they have to say.
std::string logPath() {
  return std::string(getenv("HOME")) + "/children.log";
}

[[noreturn]] void fail(std::string const& what) {
  std::fprintf(stderr, "The private desktop did not start: %s\n", what.c_str());
  std::ifstream const log(logPath());
  std::cerr << log.rdbuf();
  std::exit(1);
}

int millisecondsUntil(std::chrono::steady_clock::time_point end) {
  auto const left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
  return left > 0 ? static_cast<int>(left) : 0;
}

std::string reportOf(ReportingProcess& process, std::string const& whom) {
  auto const report = process.readReport();
  if (!report) fail(whom + " does not announce itself");
  return *report;
}

/// Some window managers announce themselves before they look after windows, and what they are asked in between is
/// lost. One that answers a question looks after windows; so it is asked again at every sign of life.
void waitForWindowManager() {
  Display* const display = XOpenDisplay(nullptr);
  if (display == nullptr) fail("the server takes no connection");
  auto const root = XDefaultRootWindow(display);
  auto const probe = XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0);
  Atom const answer = XInternAtom(display, "_NET_FRAME_EXTENTS", False);
  XSelectInput(display, root, PropertyChangeMask);
  XSelectInput(display, probe, PropertyChangeMask);
  auto const end = std::chrono::steady_clock::now() + kStartLimit;
  for (bool hasAnswered = false; !hasAnswered;) {
    XEvent question{};
    question.xclient.type = ClientMessage;
    question.xclient.window = probe;
    question.xclient.message_type = XInternAtom(display, "_NET_REQUEST_FRAME_EXTENTS", False);
    question.xclient.format = 32;
    XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &question);
    XSync(display, False);
    pollfd waiting{XConnectionNumber(display), POLLIN, 0};
    if (XPending(display) == 0 && poll(&waiting, 1, millisecondsUntil(end)) <= 0) fail("no window manager came");
    while (XPending(display) > 0) {
      XEvent event;
      XNextEvent(display, &event);
      hasAnswered |= event.type == PropertyNotify && event.xproperty.atom == answer;
    }
  }
  XCloseDisplay(display);
}

}  // namespace

PrivateDesktop::PrivateDesktop(std::string const& windowManager) {
  setenv("HOME", home_.path().c_str(), 1);
  for (auto const* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    setenv(folder, home_.path().c_str(), 1);
  }
  // No tray or settings of the desktop that the tests are started from.
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/morla-test", 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("QT_STYLE_OVERRIDE", "Fusion", 1);

  log_ = FileDescriptor(open(logPath().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  server_ = ReportingProcess({"Xvfb", "-displayfd", "{report}", "-screen", "0",
                              std::to_string(2 * kMonitorWidth) + "x" + std::to_string(kMonitorHeight) + "x24",
                              "-noreset", "-nolisten", "tcp"},
                             log_.get());
  setenv("DISPLAY", (":" + reportOf(server_, "Xvfb")).c_str(), 1);

  run({"xrandr", "--setmonitor", "*LEFT", "1280/340x800/210+0+0", "screen"}).wait();
  plugRightMonitor();
  startWindowManager(windowManager);
  waitForWindowManager();
}

PrivateDesktop::~PrivateDesktop() {
  windowManager_.end();
  bus_.end();
  server_.end();
}

ChildProcess PrivateDesktop::run(std::vector<std::string> command) {
  return ChildProcess(std::move(command), {-1, log_.get(), log_.get(), -1});
}

void PrivateDesktop::startWindowManager(std::string const& name) {
  if (name == "xfwm4") {
    // It reads its settings over a bus, which must be no other test's.
    bus_ = ReportingProcess({"dbus-daemon", "--session", "--nofork", "--nopidfile",
                             "--address=unix:path=" + (home_ / "bus").string(), "--print-address={report}"},
                            log_.get());
    auto const address = reportOf(bus_, "dbus-daemon");
    windowManager_ = run({"env", "DBUS_SESSION_BUS_ADDRESS=" + address, "NO_AT_BRIDGE=1", "xfwm4", "--compositor=off"});
    return;
  }
  windowManager_ = run({name, "--startup", "xprop -root -f _MORLA_STARTED 8s -set _MORLA_STARTED yes"});
}

void PrivateDesktop::plugRightMonitor() {
  run({"xrandr", "--setmonitor", "RIGHT", "1280/340x800/210+1280+0", "none"}).wait();
}

void PrivateDesktop::unplugRightMonitor() {
  run({"xrandr", "--delmonitor", "RIGHT"}).wait();
}

}  // namespace morla::linux
