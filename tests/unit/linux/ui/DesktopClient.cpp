#include "unit/linux/ui/DesktopClient.h"

#include <gtest/gtest.h>

#include <QSocketNotifier>
#include <algorithm>

#include "unit/linux/ui/LoopRunner.h"
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/shape.h>
#include <X11/keysym.h>

namespace morla::linux {
namespace {

struct Tree {
  XWindowId parent = 0;
  std::vector<XWindowId> children;  ///< bottom to top
};

Tree treeOf(Display* display, XWindowId window) {
  Window root = 0;
  Window* list = nullptr;
  unsigned count = 0;
  Tree tree;
  if (XQueryTree(display, window, &root, &tree.parent, &list, &count) == 0) return tree;
  tree.children.assign(list, list + count);
  if (list != nullptr) XFree(list);
  return tree;
}

XWindowAttributes attributesOf(Display* display, XWindowId window) {
  XWindowAttributes attributes{};
  XGetWindowAttributes(display, window, &attributes);
  return attributes;
}

}  // namespace

DesktopClient::DesktopClient() : display_(XOpenDisplay(nullptr)), root_(XDefaultRootWindow(display_)) {
  XSelectInput(display_, root_, SubstructureNotifyMask | PropertyChangeMask);
  XSync(display_, False);
  notifier_ = std::make_unique<QSocketNotifier>(XConnectionNumber(display_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { drain(); });
}

DesktopClient::~DesktopClient() {
  notifier_.reset();
  XCloseDisplay(display_);
}

XWindowId DesktopClient::find(std::string const& name) {
  for (auto const window : treeOf(display_, root_).children) {
    char* text = nullptr;
    XFetchName(display_, window, &text);
    bool const isIt = text != nullptr && name == text;
    if (text != nullptr) XFree(text);
    if (isIt) return window;
  }
  return 0;
}

std::string DesktopClient::className(XWindowId window) {
  XClassHint hint{};
  if (XGetClassHint(display_, window, &hint) == 0) return {};
  std::string const name = hint.res_class;
  XFree(hint.res_name);
  XFree(hint.res_class);
  return name;
}

bool DesktopClient::isOverrideRedirect(XWindowId window) {
  return attributesOf(display_, window).override_redirect != 0;
}

bool DesktopClient::isShown(XWindowId window) {
  return attributesOf(display_, window).map_state == IsViewable;
}

PixelRect DesktopClient::frame(XWindowId window) {
  auto const attributes = attributesOf(display_, window);
  Window child = 0;
  PixelRect rect{0, 0, attributes.width, attributes.height};
  XTranslateCoordinates(display_, window, root_, 0, 0, &rect.x, &rect.y, &child);
  return rect;
}

bool DesktopClient::isAbove(XWindowId upper, XWindowId lower) {
  auto const stack = treeOf(display_, root_).children;
  auto const place = [&](XWindowId window) { return std::find(stack.begin(), stack.end(), topLevelOf(window)); };
  return place(upper) > place(lower);
}

XWindowId DesktopClient::topLevelAt(PixelPoint place) {
  Window child = 0;
  XTranslateCoordinates(display_, root_, root_, place.x, place.y, &place.x, &place.y, &child);
  return child;
}

XWindowId DesktopClient::innermostAt(PixelPoint place) {
  XWindowId window = root_;
  for (Window child = root_; child != 0;) {
    window = child;
    PixelPoint inWindow;
    child = 0;
    XTranslateCoordinates(display_, root_, window, place.x, place.y, &inWindow.x, &inWindow.y, &child);
  }
  return window;
}

XWindowId DesktopClient::focus() {
  Window window = 0;
  int revert = 0;
  XGetInputFocus(display_, &window, &revert);
  return window;
}

XWindowId DesktopClient::activeWindow() {
  return property(root_, "_NET_ACTIVE_WINDOW").value_or(0);
}

bool DesktopClient::hasShape(XWindowId window) {
  int isBounding = 0;
  int isClip = 0;
  int x = 0;
  int y = 0;
  unsigned width = 0;
  unsigned height = 0;
  XShapeQueryExtents(display_, window, &isBounding, &x, &y, &width, &height, &isClip, &x, &y, &width, &height);
  return isBounding != 0;
}

XWindowId DesktopClient::openWindow(std::string const& name, Form form, PixelRect frame) {
  auto const window =
      XCreateSimpleWindow(display_, root_, frame.x, frame.y, static_cast<unsigned>(frame.width),
                          static_cast<unsigned>(frame.height), 0, 0, XWhitePixel(display_, XDefaultScreen(display_)));
  XStoreName(display_, window, name.c_str());
  XSizeHints hints{};
  hints.flags = USPosition | USSize;
  XSetWMNormalHints(display_, window, &hints);
  if (form == Form::fullScreen) {
    Atom state = XInternAtom(display_, "_NET_WM_STATE_FULLSCREEN", False);
    XChangeProperty(display_, window, XInternAtom(display_, "_NET_WM_STATE", False), XA_ATOM, 32, PropModeReplace,
                    static_cast<unsigned char*>(static_cast<void*>(&state)), 1);
  }
  XSelectInput(display_, window, FocusChangeMask | StructureNotifyMask);
  XMapWindow(display_, window);
  activate(window);
  return window;
}

void DesktopClient::closeWindow(XWindowId window) {
  XDestroyWindow(display_, window);
  XSync(display_, False);
}

void DesktopClient::activate(XWindowId window) {
  EXPECT_TRUE(runUntilSeen([this, window] { return isShown(window); }));
  sendToRoot(window, "_NET_ACTIVE_WINDOW", 2, CurrentTime);
  EXPECT_TRUE(runUntilSeen([this, window] { return activeWindow() == window && focus() == window; }))
      << "the focus is on " << focus() << ", active is " << activeWindow() << ", not " << window;
}

void DesktopClient::movePointer(PixelPoint to) {
  XTestFakeMotionEvent(display_, XDefaultScreen(display_), to.x, to.y, CurrentTime);
  XSync(display_, False);
}

void DesktopClient::press(unsigned button) {
  XTestFakeButtonEvent(display_, button, True, CurrentTime);
  XSync(display_, False);
}

void DesktopClient::release(unsigned button) {
  XTestFakeButtonEvent(display_, button, False, CurrentTime);
  XSync(display_, False);
}

void DesktopClient::click(PixelPoint at, unsigned button) {
  movePointer(at);
  press(button);
  release(button);
}

void DesktopClient::typeEscape() {
  auto const key = XKeysymToKeycode(display_, XK_Escape);
  XTestFakeKeyEvent(display_, key, True, CurrentTime);
  XTestFakeKeyEvent(display_, key, False, CurrentTime);
  XSync(display_, False);
}

bool DesktopClient::grabPointer() {
  return XGrabPointer(display_, root_, False, ButtonPressMask, GrabModeAsync, GrabModeAsync, 0, 0, CurrentTime) ==
         GrabSuccess;
}

void DesktopClient::ungrabPointer() {
  XUngrabPointer(display_, CurrentTime);
  XSync(display_, False);
}

XWindowId DesktopClient::topLevelOf(XWindowId window) {
  for (auto parent = treeOf(display_, window).parent; parent != 0 && parent != root_;
       parent = treeOf(display_, window).parent) {
    window = parent;
  }
  return window;
}

std::optional<unsigned long> DesktopClient::property(XWindowId window, char const* name) {
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display_, window, XInternAtom(display_, name, False), 0, 1, False, AnyPropertyType, &type, &format,
                     &count, &left, &data);
  std::optional<unsigned long> value;
  if (format == 32 && count == 1) value = *static_cast<unsigned long*>(static_cast<void*>(data));
  if (data != nullptr) XFree(data);
  return value;
}

void DesktopClient::sendToRoot(XWindowId window, char const* type, long first, long second) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display_, type, False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = first;
  event.xclient.data.l[1] = second;
  XSendEvent(display_, root_, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
  XSync(display_, False);
}

void DesktopClient::drain() {
  while (XPending(display_) > 0) {
    XEvent event;
    XNextEvent(display_, &event);
  }
}

}  // namespace morla::linux
