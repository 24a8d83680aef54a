#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "QtTestLoop.h"
#include "platform/linux/system/BusConnection.h"
#include "platform/linux/system/X11Workspace.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"
#include "support/ReportingProcess.h"
#include "support/TalkingProcess.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {

/// A virtual X server of this test program's own.
class PrivateServer {
 public:
  PrivateServer() = default;

 private:
  support::ReportingProcess server_{
      {"Xvfb", "-displayfd", "{report}", "-screen", "0", "800x600x24", "-noreset", "-nolisten", "tcp"}};
  std::string const display_ = ":" + server_.readReport().value_or("none");
  support::EnvironmentVariable variable_{"DISPLAY", display_};
};

/// A small application under the test's control (see TestApplication.cpp).
class TestApp {
 public:
  std::int64_t processIdentifier() const { return process_.processIdentifier(); }

  /// The window's id, once it is mapped.
  xcb_window_t openWindow(std::string const& windowClass, std::string const& option = "") {
    process_.writeLine("window " + windowClass + ' ' + option);
    return number("window ");
  }
  void closeWindow(xcb_window_t window) {
    process_.writeLine("close " + std::to_string(window));
    EXPECT_EQ(number("closed "), window);
  }
  void own(std::string const& busName, std::string const& localizedName) {
    process_.writeLine("own " + busName + ' ' + localizedName);
    EXPECT_EQ(process_.readUntil("owned "), busName);
  }
  void ownSilently(std::string const& busName) {
    process_.writeLine("silent " + busName);
    EXPECT_EQ(process_.readUntil("owned "), busName);
  }
  void speak(std::string const& localizedName) {
    process_.writeLine("speak " + localizedName);
    EXPECT_TRUE(process_.readUntil("spoken").has_value());
  }
  void finish() { process_.finish(); }

 private:
  xcb_window_t number(std::string const& prefix) {
    auto const text = process_.readUntil(prefix);
    EXPECT_TRUE(text.has_value()) << "the application did not tell of: " << prefix;
    return text ? static_cast<xcb_window_t>(std::stoul(*text)) : 0U;
  }

  support::TalkingProcess process_{{MORLA_TEST_APPLICATION}};
};

/// A desktop with a bus and an X server, and a workspace on it that is made when a test asks for it.
class DesktopTest : public testing::Test {
 protected:
  support::TemporaryFolder home_;
  support::EnvironmentVariable homeVariable_{"HOME", home_.path()};
  support::EnvironmentVariable configVariable_{"XDG_CONFIG_HOME", home_ / "config"};
  support::EnvironmentVariable dataFoldersVariable_{"XDG_DATA_DIRS", home_ / "none"};
  support::PrivateBus privateBus_;
  PrivateServer server_;
  QtTestLoop loop_;
  std::unique_ptr<support::ChildProcess> manager_;
  std::unique_ptr<BusConnection> bus_;
  std::unique_ptr<X11Workspace> workspace_;
  std::unique_ptr<XConnection> x_ = XConnection::open(loop_);
  Subscription observation_;
  int activations_ = 0;

  void SetUp() override { ASSERT_NE(x_, nullptr) << "Xvfb does not answer"; }

  void startManager(std::vector<std::string> const& command = {"openbox", "--sm-disable"}) {
    x_->selectEvents(x_->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    x_->onEvents([this] {
      while (x_->nextEvent()) {
      }
    });
    // A window manager announces itself before it listens, and what is asked of it between is lost. A window that was
    // there before is managed when it listens, so its name in the list of windows says that all is ready.
    auto const probe = xcb_generate_id(x_->get());
    auto const* screen = xcb_setup_roots_iterator(xcb_get_setup(x_->get())).data;
    xcb_create_window(x_->get(), XCB_COPY_FROM_PARENT, probe, x_->root(), 0, 0, 40, 40, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    xcb_map_window(x_->get(), probe);
    x_->roundTrip();
    std::vector<std::string> words{"env", "XDG_DATA_DIRS=/usr/local/share:/usr/share"};
    words.insert(words.end(), command.begin(), command.end());
    manager_ = std::make_unique<support::ChildProcess>(words);
    auto const isManaged = [&] {
      auto const list = x_->items(x_->root(), x_->atom(Atom::netClientList), XCB_ATOM_WINDOW);
      return std::ranges::find(list, probe) != list.end();
    };
    ASSERT_TRUE(loop_.runUntil(isManaged)) << command[0] << " does not start";
    xcb_destroy_window(x_->get(), probe);
    x_->flush();
    ASSERT_TRUE(loop_.runUntil([&] { return !isManaged() && activeWindow() == XCB_WINDOW_NONE; }));
  }

  X11Workspace& openWorkspace() {
    bus_ = std::make_unique<BusConnection>(openSessionBus().bus, loop_);
    workspace_ =
        std::make_unique<X11Workspace>(XConnection::open(loop_), *bus_, loop_,
                                       [](std::string const& path) -> std::optional<platform::BundleInformation> {
                                         if (path != "/Applications/A.app") return std::nullopt;
                                         return platform::BundleInformation{"a.identifier", "A", std::nullopt};
                                       });
    observation_ = workspace_->onActivated([this] { ++activations_; });
    return *workspace_;
  }

  /// Opens a window, which the window manager has made the active one when this returns.
  xcb_window_t openActive(TestApp& application, std::string const& windowClass, std::string const& option = "") {
    auto const window = application.openWindow(windowClass, option);
    x_->selectEvents(window, XCB_EVENT_MASK_FOCUS_CHANGE);
    EXPECT_TRUE(loop_.runUntil([&] { return activeWindow() == window && focusedWindow() == window; }));
    return window;
  }

  /// "none", or the localized name.
  std::string frontName() {
    auto const front = workspace_->frontmostApplication();
    return front ? front->localizedName.value_or("unnamed") : "none";
  }
  testing::AssertionResult becomesFrontmost(std::string const& name) {
    if (loop_.runUntil([&] { return frontName() == name; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "frontmost is " << frontName();
  }
  std::optional<platform::RunningApplication> running(std::int64_t processIdentifier) {
    for (auto const& application : workspace_->runningApplications()) {
      if (application.processIdentifier == processIdentifier) return application;
    }
    return std::nullopt;
  }
  std::vector<std::uint32_t> stacking() {
    return x_->items(x_->root(), x_->atom(Atom::netClientListStacking), XCB_ATOM_WINDOW);
  }
  xcb_window_t focusedWindow() {
    XcbReply<xcb_get_input_focus_reply_t> const reply(
        xcb_get_input_focus_reply(x_->get(), xcb_get_input_focus(x_->get()), nullptr));
    return reply ? reply->focus : 0U;
  }
  testing::AssertionResult getsKeyboard(xcb_window_t window) {
    x_->selectEvents(window, XCB_EVENT_MASK_FOCUS_CHANGE);
    if (loop_.runUntil([&] { return focusedWindow() == window; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the keyboard is at window " << focusedWindow();
  }
  std::uint32_t activeWindow() {
    auto const active = x_->items(x_->root(), x_->atom(Atom::netActiveWindow), XCB_ATOM_WINDOW);
    return active.empty() ? 0U : active[0];
  }
  /// A window like a panel of ours, which no manager manages; it has the keyboard when this returns.
  void focusPanel() {
    auto const panel = xcb_generate_id(x_->get());
    auto const* screen = xcb_setup_roots_iterator(xcb_get_setup(x_->get())).data;
    std::uint32_t const values[] = {1};
    xcb_create_window(x_->get(), XCB_COPY_FROM_PARENT, panel, x_->root(), 0, 0, 40, 40, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(x_->get(), panel);
    xcb_set_input_focus(x_->get(), XCB_INPUT_FOCUS_PARENT, panel, XCB_CURRENT_TIME);
    x_->roundTrip();
  }
  void focus(xcb_window_t window) {
    xcb_set_input_focus(x_->get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    x_->roundTrip();
  }
};

/// The same desktop under each window manager, whose command is the parameter.
class ManagedDesktopTest : public DesktopTest, public testing::WithParamInterface<std::vector<std::string>> {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    if (!HasFatalFailure()) startManager(GetParam());
  }
};

}  // namespace morla::linux
