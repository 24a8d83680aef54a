#include "platform/linux/ui/XServer.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <cstring>
#include <utility>
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/Xfixes.h>

namespace morla::linux {
namespace {

struct XFreeing {
  void operator()(void* data) const {
    if (data != nullptr) XFree(data);
  }
};
template <typename T>
using XOwned = std::unique_ptr<T, XFreeing>;

std::vector<XWindowId> childrenOf(Display* display, XWindowId window) {
  Window rootOfWindow = 0;
  Window parent = 0;
  Window* list = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, window, &rootOfWindow, &parent, &list, &count) == 0) return {};
  XOwned<Window> const owned(list);
  return {list, list + count};
}

XWindowId parentOf(Display* display, XWindowId window) {
  Window rootOfWindow = 0;
  Window parent = 0;
  Window* list = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, window, &rootOfWindow, &parent, &list, &count) == 0) return 0;
  XOwned<Window> const owned(list);
  return parent;
}

struct Property {
  Atom type = 0;  ///< 0 when there is no such property
  int format = 0;
  unsigned long count = 0;
  XOwned<unsigned char> data;
};

/// At most `length` 32-bit items.
Property propertyOf(Display* display, XWindowId window, Atom name, long length, Atom wantedType) {
  Property property;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, window, name, 0, length, False, wantedType, &property.type, &property.format,
                     &property.count, &left, &data);
  property.data.reset(data);
  return property;
}

}  // namespace

std::unique_ptr<XServer> XServer::open(MainLoop& loop) {
  auto const* qt = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (qt == nullptr || qt->display() == nullptr) return nullptr;
  Display* const display = XOpenDisplay(XDisplayString(qt->display()));
  if (display == nullptr) return nullptr;
  return std::unique_ptr<XServer>(new XServer(loop, display));
}

XServer::XServer(MainLoop& loop, _XDisplay* display)
    : loop_(loop), display_(display), errors_(display), root_(XDefaultRootWindow(display)) {
  int errorBase = 0;
  int eventBase = 0;
  if (XFixesQueryExtension(display_, &eventBase, &errorBase) != 0) {
    selectionEvent_ = eventBase + XFixesSelectionNotify;
    int major = 5;
    int minor = 0;
    XFixesQueryVersion(display_, &major, &minor);
  }
  XSelectInput(display_, root_, SubstructureNotifyMask | PropertyChangeMask);
  notifier_ = std::make_unique<QSocketNotifier>(XConnectionNumber(display_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { handleEvents(); });
  XFlush(display_);
  handleEventsLater();
}

XServer::~XServer() {
  notifier_.reset();
  XCloseDisplay(display_);
}

PixelPoint XServer::pointer() {
  Window rootOfPointer = 0;
  Window child = 0;
  PixelPoint onRoot;
  PixelPoint onWindow;
  unsigned modifiers = 0;
  XQueryPointer(display_, root_, &rootOfPointer, &child, &onRoot.x, &onRoot.y, &onWindow.x, &onWindow.y, &modifiers);
  handleEventsLater();
  return onRoot;
}

bool XServer::hasSelectionOwner(std::string const& prefix) {
  auto const owner = XGetSelectionOwner(display_, atom(prefix + std::to_string(XDefaultScreen(display_))));
  handleEventsLater();
  return owner != 0;
}

Subscription XServer::onSelectionOwnerDidChange(std::string const& prefix, std::function<void()> observer) {
  auto const selection = atom(prefix + std::to_string(XDefaultScreen(display_)));
  if (selectionEvent_ >= 0) {
    XFixesSelectSelectionInput(display_, root_, selection,
                               XFixesSetSelectionOwnerNotifyMask | XFixesSelectionWindowDestroyNotifyMask |
                                   XFixesSelectionClientCloseNotifyMask);
    XFlush(display_);
  }
  handleEventsLater();
  return selections_[selection].add(std::move(observer));
}

std::vector<XWindowId> XServer::stack() {
  auto windows = childrenOf(display_, root_);
  handleEventsLater();
  return windows;
}

bool XServer::isShownAndManaged(XWindowId topLevel) {
  XWindowAttributes attributes{};
  bool managed = XGetWindowAttributes(display_, topLevel, &attributes) != 0 && attributes.map_state == IsViewable &&
                 attributes.c_class == InputOutput;
  if (managed && !hasState(topLevel)) {
    // Window managers put the client directly into their frame, or leave it without one.
    auto const children = childrenOf(display_, topLevel);
    managed = std::any_of(children.begin(), children.end(), [this](XWindowId child) { return hasState(child); });
  }
  handleEventsLater();
  return managed;
}

bool XServer::hasState(XWindowId window) {
  return propertyOf(display_, window, atom("WM_STATE"), 0, AnyPropertyType).type != 0;
}

XWindowId XServer::activeTopLevel() {
  auto const active = propertyOf(display_, root_, atom("_NET_ACTIVE_WINDOW"), 1, XA_WINDOW);
  XWindowId window = 0;
  if (active.type == XA_WINDOW && active.format == 32 && active.count == 1) {
    // Xlib gives 32-bit items as longs.
    window = *static_cast<unsigned long*>(static_cast<void*>(active.data.get()));
  }
  while (window != 0) {
    auto const parent = parentOf(display_, window);
    if (parent == 0 || parent == root_) {
      if (parent == 0) window = 0;
      break;
    }
    window = parent;
  }
  handleEventsLater();
  return window;
}

void XServer::raise(XWindowId window) {
  XRaiseWindow(display_, window);
  XFlush(display_);
}

void XServer::putBelow(XWindowId window, XWindowId sibling) {
  XWindowChanges changes{};
  changes.sibling = sibling;
  changes.stack_mode = Below;
  XConfigureWindow(display_, window, CWSibling | CWStackMode, &changes);
  XFlush(display_);
}

unsigned long XServer::atom(std::string const& name) {
  auto const [entry, isNew] = atoms_.try_emplace(name, 0);
  if (isNew) entry->second = XInternAtom(display_, name.c_str(), False);
  return entry->second;
}

void XServer::handleEvents() {
  bool desktopChanged = false;
  while (XPending(display_) > 0) {
    XEvent event{};
    XNextEvent(display_, &event);
    handle(event, desktopChanged);
  }
  if (desktopChanged) desktopDidChange_.call();
}

void XServer::handle(_XEvent const& event, bool& desktopChanged) {
  if (event.type == selectionEvent_) {
    XFixesSelectionNotifyEvent notify{};
    static_assert(sizeof notify <= sizeof event);
    std::memcpy(&notify, &event, sizeof notify);
    // The observers ask who owns it now: several changes may lie behind one notice.
    if (auto const found = selections_.find(notify.selection); found != selections_.end()) found->second.call();
    return;
  }
  switch (event.type) {
    case PropertyNotify:
      desktopChanged |= event.xproperty.atom == atom("_NET_ACTIVE_WINDOW");
      break;
    case MapNotify:
    case ConfigureNotify:
    case CirculateNotify:
    case ReparentNotify:
      desktopChanged = true;
      break;
    default:
      break;
  }
}

void XServer::handleEventsLater() {
  if (XEventsQueued(display_, QueuedAlready) == 0) return;
  if (std::exchange(isHandlingLater_, true)) return;
  loop_.post(life_.weak([this] {
    isHandlingLater_ = false;
    handleEvents();
  }));
}

}  // namespace morla::linux
