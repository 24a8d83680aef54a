#include "platform/linux/ui/XClient.h"

#include <QGuiApplication>
#include <QString>
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/shape.h>

namespace morla::linux {
namespace {

Display* displayOfQt() {
  return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
}

}  // namespace

XClient::XClient() : display_(displayOfQt()), errors_(display_) {}

void XClient::synchronise() {
  XSync(display_, False);
}

void XClient::setClass(XWindowId window, QString const& name) {
  QByteArray text = name.toUtf8();
  XClassHint hint{text.data(), text.data()};
  XSetClassHint(display_, window, &hint);
}

XWindowId XClient::focus() {
  Window window = 0;
  int revertTo = 0;
  XGetInputFocus(display_, &window, &revertTo);
  return window;
}

void XClient::setFocus(XWindowId window) {
  constexpr XWindowId kPointerRoot = 1;
  XWindowAttributes attributes{};
  if (window <= kPointerRoot || XGetWindowAttributes(display_, window, &attributes) == 0) return;
  if (attributes.map_state != IsViewable) return;
  XSetInputFocus(display_, window, RevertToParent, CurrentTime);
  XFlush(display_);
}

void XClient::activate(XWindowId window) {
  constexpr long kFromUser = 2;  // as a task list says it
  auto const root = XDefaultRootWindow(display_);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display_, "_NET_ACTIVE_WINDOW", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = kFromUser;
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(display_, root, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
  XFlush(display_);
}

void XClient::setShape(XWindowId window, std::vector<PixelRect> const& pixels) {
  combine(window, Shape::bounding, pixels);
}

void XClient::clearShape(XWindowId window) {
  remove(window, Shape::bounding);
}

void XClient::setClickableShape(XWindowId window, std::vector<PixelRect> const& pixels) {
  combine(window, Shape::input, pixels);
}

void XClient::clearClickableShape(XWindowId window) {
  remove(window, Shape::input);
}

void XClient::combine(XWindowId window, Shape shape, std::vector<PixelRect> const& pixels) {
  std::vector<XRectangle> rectangles;
  rectangles.reserve(pixels.size());
  for (auto const& rect : pixels) {
    rectangles.push_back({static_cast<short>(rect.x), static_cast<short>(rect.y),
                          static_cast<unsigned short>(rect.width), static_cast<unsigned short>(rect.height)});
  }
  XShapeCombineRectangles(display_, window, shape == Shape::bounding ? ShapeBounding : ShapeInput, 0, 0,
                          rectangles.data(), static_cast<int>(rectangles.size()), ShapeSet, YXSorted);
  XFlush(display_);
}

void XClient::remove(XWindowId window, Shape shape) {
  XShapeCombineMask(display_, window, shape == Shape::bounding ? ShapeBounding : ShapeInput, 0, 0, 0, ShapeSet);
  XFlush(display_);
}

bool XClient::canGrabPointer() {
  auto const status = XGrabPointer(display_, XDefaultRootWindow(display_), True, ButtonPressMask | ButtonReleaseMask,
                                   GrabModeAsync, GrabModeAsync, 0, 0, CurrentTime);
  if (status != GrabSuccess) return false;
  XUngrabPointer(display_, CurrentTime);
  XFlush(display_);
  return true;
}

}  // namespace morla::linux
