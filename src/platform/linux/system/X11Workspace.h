#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/Workspace.h"
#include "platform/linux/system/ClientWindows.h"
#include "platform/linux/system/DesktopEntries.h"
#include "platform/linux/system/FrontTracker.h"
#include "platform/linux/system/ScriptableApplications.h"
#include "platform/linux/system/XConnection.h"

namespace morla::linux {

/// The applications of an X11 desktop: those that can be scripted over the session bus, and those that have windows.
class X11Workspace final : public platform::Workspace {
 public:
  /// Reads an application bundle's Info.plist.
  using ReadBundle = std::function<std::optional<platform::BundleInformation>(std::string const& path)>;

  /// How long the first list of applications may wait for answers, from the making of this object.
  static constexpr std::chrono::milliseconds kFirstEnumerationLimit{300};

  /// Begins at once to ask the bus who runs. `bus` outlives this object.
  X11Workspace(std::unique_ptr<XConnection> x, BusConnection& bus, MainLoop& loop, ReadBundle readBundle);

  /// In order of start. The first call waits for the applications that run already (see above).
  [[nodiscard]] std::vector<platform::RunningApplication> runningApplications() override;
  [[nodiscard]] std::optional<platform::RunningApplication> frontmostApplication() override;
  [[nodiscard]] Subscription onActivated(std::function<void()> observer) override;
  void activate(platform::RunningApplication const& application) override;
  void activateSelf() override;
  [[nodiscard]] std::optional<platform::BundleInformation> bundleAt(std::string const& path) override;
  bool openUrl(std::string const& url) override;

  /// Told of every `activateSelf`: this program comes to the front because the user wants something of it.
  [[nodiscard]] Subscription onSelfActivated(std::function<void()> observer);

 private:
  struct Pending {
    bool manager = false;
    bool clients = false;
    bool active = false;
  };

  void readBeginning();
  void handleEvents();
  /// Without telling anybody: for calls that are in the middle of something.
  void takeEvents();
  void handleEvent(xcb_generic_event_t const& event, Pending& pending);
  void handleProperty(xcb_property_notify_event_t const& event, Pending& pending);
  void handleFocus(xcb_focus_in_event_t const& event);
  void apply(Pending const& pending);
  void refreshClients();
  void watchForLostFront();
  [[nodiscard]] bool frontHasWindow() const;
  void announceIfChanged();
  void announceLater();

  [[nodiscard]] platform::RunningApplication identityOf(WindowOwner const& owner, std::string const& instance);
  [[nodiscard]] platform::RunningApplication self() const;
  [[nodiscard]] ClientWindow const* anyWindowOf(WindowOwner const& owner) const;
  [[nodiscard]] std::optional<WindowOwner> ownerOf(platform::RunningApplication const& application) const;
  void finishFirstEnumeration();
  [[nodiscard]] std::vector<ScriptableApplication> scriptableApplications();

  std::unique_ptr<XConnection> x_;
  MainLoop& loop_;
  ReadBundle readBundle_;
  std::chrono::steady_clock::time_point const enumerationDeadline_;
  bool isEnumerated_ = false;
  ClientWindows clients_;
  ScriptableApplications scriptable_;
  DesktopEntries desktopEntries_;
  WindowOwner const self_;
  FrontTracker tracker_;
  std::optional<WindowOwner> announced_;
  xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
  Subscription frontLoss_;
  ObserverList<> activated_;
  ObserverList<> selfActivated_;
  Lifetime life_;
};

}  // namespace morla::linux
