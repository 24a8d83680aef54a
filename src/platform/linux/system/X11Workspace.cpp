#include "platform/linux/system/X11Workspace.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "base/MainThread.h"
#include "platform/linux/system/LinuxOwnBundle.h"
#include "platform/linux/system/Processes.h"
#include "platform/linux/system/UrlOpener.h"
#include "platform/linux/system/XdgFolders.h"

namespace morla::linux {
namespace {

using platform::RunningApplication;

/// An application that replaces its only window (a splash screen, a change of document) keeps the front.
constexpr auto kWindowlessFrontTime = std::chrono::milliseconds(100);

/// The high bit tells an event that a client sent.
constexpr std::uint8_t kEventTypeMask = 0x7F;

FrontTracker::Window tracked(ClientWindow const& client) {
  return {client.window, client.owner};
}

}  // namespace

X11Workspace::X11Workspace(std::unique_ptr<XConnection> x, BusConnection& bus, MainLoop& loop, ReadBundle readBundle)
    : x_(std::move(x)),
      loop_(loop),
      readBundle_(std::move(readBundle)),
      enumerationDeadline_(std::chrono::steady_clock::now() + kFirstEnumerationLimit),
      clients_(*x_),
      scriptable_(bus),
      desktopEntries_(dataFolders(), configFolders()),
      self_{getpid(), {}},
      tracker_(self_) {
  readBeginning();
  x_->onEvents([this] { handleEvents(); });
}

void X11Workspace::readBeginning() {
  clients_.refresh();
  apply({.manager = false, .clients = false, .active = true});
  // The focus goes last: a window manager tells of it with a delay.
  if (auto const* focused = clients_.focused()) tracker_.focusEntered(tracked(*focused));
  announced_ = tracker_.front();
}

void X11Workspace::handleEvents() {
  takeEvents();
  announceIfChanged();
}

void X11Workspace::takeEvents() {
  // Reading the state that an event tells of may bring further events: only the end of it all is announced.
  for (;;) {
    Pending pending;
    auto event = x_->nextEvent();
    if (!event) break;
    for (; event; event = x_->nextEvent()) handleEvent(*event, pending);
    apply(pending);
  }
}

void X11Workspace::handleEvent(xcb_generic_event_t const& event, Pending& pending) {
  switch (event.response_type & kEventTypeMask) {
    case XCB_PROPERTY_NOTIFY:
      handleProperty(reinterpret_cast<xcb_property_notify_event_t const&>(event), pending);
      break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
      handleFocus(reinterpret_cast<xcb_focus_in_event_t const&>(event));
      break;
    case XCB_DESTROY_NOTIFY: {
      auto const& destroyed = reinterpret_cast<xcb_destroy_notify_event_t const&>(event);
      if (destroyed.window == clients_.managerCheck()) pending.manager = true;
      pending.clients = true;
      break;
    }
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
      pending.clients = true;
      break;
    default:
      break;
  }
}

void X11Workspace::handleProperty(xcb_property_notify_event_t const& event, Pending& pending) {
  lastTime_ = event.time;
  if (event.atom == x_->atom(Atom::netSupportingWmCheck)) pending.manager = true;
  if (event.window != x_->root()) {
    if (event.atom == XCB_ATOM_WM_CLASS || event.atom == x_->atom(Atom::netWmPid)) clients_.reread(event.window);
    return;
  }
  if (event.atom == x_->atom(Atom::netClientList)) pending.clients = true;
  if (event.atom == x_->atom(Atom::netActiveWindow)) pending.active = true;
}

void X11Workspace::handleFocus(xcb_focus_in_event_t const& event) {
  // A keyboard grab takes no focus away, and the pointer details tell of the pointer, not of the window.
  if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) return;
  bool const isAboutPointer = event.detail == XCB_NOTIFY_DETAIL_POINTER ||
                              event.detail == XCB_NOTIFY_DETAIL_POINTER_ROOT || event.detail == XCB_NOTIFY_DETAIL_NONE;
  auto const* client = clients_.find(event.event);
  if (client == nullptr || isAboutPointer) return;
  if ((event.response_type & kEventTypeMask) == XCB_FOCUS_IN) {
    tracker_.focusEntered(tracked(*client));
  } else if (event.detail != XCB_NOTIFY_DETAIL_INFERIOR) {
    tracker_.focusLeft(event.event);
  }
}

void X11Workspace::apply(Pending const& pending) {
  if (pending.manager) clients_.findManager();
  if (pending.manager || pending.clients) refreshClients();
  if (!pending.manager && !pending.active) return;
  auto const active = clients_.hasManager() ? x_->items(x_->root(), x_->atom(Atom::netActiveWindow), XCB_ATOM_WINDOW)
                                            : std::vector<std::uint32_t>();
  std::optional<FrontTracker::Window> window;
  if (!active.empty() && active[0] != XCB_WINDOW_NONE) {
    // The active window may be told before the list of windows that has it.
    if (clients_.find(active[0]) == nullptr) refreshClients();
    if (auto const* client = clients_.find(active[0])) window = tracked(*client);
  }
  tracker_.activeWindowIs(window);
}

void X11Workspace::refreshClients() {
  auto const changes = clients_.refresh();
  for (auto const window : changes.gone) tracker_.windowVanished(window);
  // A new window may have got the keyboard before it was watched.
  auto const* focused = changes.come.empty() ? nullptr : clients_.focused();
  if (focused != nullptr && std::ranges::find(changes.come, focused->window) != changes.come.end()) {
    tracker_.focusEntered(tracked(*focused));
  }
  watchForLostFront();
}

bool X11Workspace::frontHasWindow() const {
  auto const& front = tracker_.front();
  return front && (*front == self_ || anyWindowOf(*front) != nullptr);
}

void X11Workspace::watchForLostFront() {
  if (!tracker_.front() || frontHasWindow()) {
    frontLoss_.end();
    return;
  }
  if (frontLoss_.isActive()) return;
  frontLoss_ = loop_.after(kWindowlessFrontTime, life_.weak([this] {
    frontLoss_.end();
    if (frontHasWindow()) return;
    tracker_.loseFront();
    announceIfChanged();
  }));
}

void X11Workspace::announceIfChanged() {
  if (announced_ == tracker_.front()) return;
  announced_ = tracker_.front();
  activated_.call();
}

void X11Workspace::announceLater() {
  loop_.post(life_.weak([this] { announceIfChanged(); }));
}

std::vector<RunningApplication> X11Workspace::runningApplications() {
  assertIsMainThread();
  finishFirstEnumeration();
  std::vector<RunningApplication> found{self()};
  std::set<std::int64_t> scriptableProcesses;
  for (auto const& application : scriptableApplications()) {
    scriptableProcesses.insert(application.processIdentifier);
    found.push_back({application.processIdentifier, application.name, application.identifier});
  }
  std::set<WindowOwner> owners{self_};
  for (auto const& [window, client] : clients_.all()) {
    if (scriptableProcesses.contains(client.owner.processIdentifier) || !owners.insert(client.owner).second) continue;
    found.push_back(identityOf(client.owner, client.windowInstance));
  }

  std::vector<std::tuple<std::uint64_t, std::int64_t, std::size_t>> order;
  for (std::size_t i = 0; i < found.size(); ++i) {
    order.emplace_back(processStartTime(found[i].processIdentifier), found[i].processIdentifier, i);
  }
  std::ranges::sort(order);
  std::vector<RunningApplication> result;
  for (auto const& place : order) result.push_back(std::move(found[std::get<2>(place)]));
  return result;
}

/// An application that is still starting, or hangs, may own its name and not answer yet. It runs all the same: until it
/// says what it is called, the desktop's file of the same name does.
std::vector<ScriptableApplication> X11Workspace::scriptableApplications() {
  auto applications = scriptable_.running();
  for (auto& application : scriptable_.silent()) {
    auto const* entry = desktopEntries_.withIdentifier(application.identifier);
    if (entry == nullptr || entry->name.empty()) continue;
    application.name = entry->name;
    applications.push_back(std::move(application));
  }
  return applications;
}

void X11Workspace::finishFirstEnumeration() {
  if (std::exchange(isEnumerated_, true)) return;
  scriptable_.finishFirstEnumeration(enumerationDeadline_);
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
  assertIsMainThread();
  auto const& front = tracker_.front();
  if (!front) return std::nullopt;
  if (*front == self_) return self();
  finishFirstEnumeration();
  auto const* client = anyWindowOf(*front);
  return identityOf(*front, client != nullptr ? client->windowInstance : std::string());
}

RunningApplication X11Workspace::self() const {
  return {self_.processIdentifier, kOwnName, kOwnIdentifier};
}

RunningApplication X11Workspace::identityOf(WindowOwner const& owner, std::string const& instance) {
  for (auto const& application : scriptableApplications()) {
    if (application.processIdentifier == owner.processIdentifier && owner.processIdentifier != 0) {
      return {owner.processIdentifier, application.name, application.identifier};
    }
  }
  RunningApplication result;
  result.processIdentifier = owner.processIdentifier;
  if (!owner.windowClass.empty()) result.localizedName = owner.windowClass;
  if (auto const* entry = desktopEntries_.forWindowClass(owner.windowClass, instance)) {
    result.bundleIdentifier = entry->identifier;
    if (!entry->name.empty()) result.localizedName = entry->name;
  }
  return result;
}

ClientWindow const* X11Workspace::anyWindowOf(WindowOwner const& owner) const {
  for (auto const& [window, client] : clients_.all()) {
    if (client.owner == owner) return &client;
  }
  return nullptr;
}

std::optional<WindowOwner> X11Workspace::ownerOf(RunningApplication const& application) const {
  for (auto const& [window, client] : clients_.all()) {
    bool const isMeant =
        application.processIdentifier != 0
            ? client.owner.processIdentifier == application.processIdentifier
            : client.owner.processIdentifier == 0 && client.owner.windowClass == application.localizedName.value_or("");
    if (isMeant) return client.owner;
  }
  return std::nullopt;
}

Subscription X11Workspace::onActivated(std::function<void()> observer) {
  assertIsMainThread();
  return activated_.add(std::move(observer));
}

void X11Workspace::activate(RunningApplication const& application) {
  assertIsMainThread();
  if (application.processIdentifier == self_.processIdentifier) {
    activateSelf();
    return;
  }
  x_->roundTrip();
  takeEvents();
  announceLater();
  auto const owner = ownerOf(application);
  if (!owner) return;
  auto target = tracker_.lastFocused(*owner);
  if (!target || clients_.find(*target) == nullptr) target = clients_.topmostOf(*owner);
  if (!target) return;

  auto const& focused = tracker_.focused();
  if (tracker_.front() == *owner) {
    if (!focused || focused->owner != *owner) clients_.giveFocus(*target, lastTime_);
    return;
  }
  bool const hasFocus = focused && focused->owner == *owner;
  // While this program is in front the keyboard stays where it is: there is nothing to move. The window manager could
  // carry it out after a question of ours has opened, and take the keyboard away from it.
  if (!hasFocus || tracker_.front() != self_) clients_.activate(*target);
  // Nothing will happen to a window that has the keyboard already, so nothing would tell.
  if (hasFocus) tracker_.activated(*focused);
}

void X11Workspace::activateSelf() {
  assertIsMainThread();
  // What happened to other windows before this call must not take the front back after it.
  x_->roundTrip();
  takeEvents();
  tracker_.activateSelf();
  frontLoss_.end();
  announceLater();
  selfActivated_.call();
}

Subscription X11Workspace::onSelfActivated(std::function<void()> observer) {
  assertIsMainThread();
  return selfActivated_.add(std::move(observer));
}

std::optional<platform::BundleInformation> X11Workspace::bundleAt(std::string const& path) {
  return readBundle_(path);
}

bool X11Workspace::openUrl(std::string const& url) {
  return openUrlWith(desktopEntries_, url);
}

}  // namespace morla::linux
