#include "platform/linux/input/RawKeys.h"

#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cstring>
#include <utility>

#include "platform/linux/input/XcbHandle.h"
// Xlib's macros come last, so that they meet no header of Qt.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

namespace morla::linux {
namespace {

std::shared_ptr<Keymap const> loadKeymap() {
  auto const connection = connectToX();
  return connection == nullptr ? nullptr : Keymap::load(connection.get());
}

constexpr std::uint16_t stateOf(unsigned modifiers, int group) {
  return static_cast<std::uint16_t>(modifiers | (static_cast<unsigned>(group) & 3U) << 13U);
}

bool selectRawKeys(Display* display) {
  std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
  XISetMask(bits.data(), XI_RawKeyPress);
  XISetMask(bits.data(), XI_RawKeyRelease);
  XIEventMask mask{XIAllMasterDevices, static_cast<int>(bits.size()), bits.data()};
  return XISelectEvents(display, XDefaultRootWindow(display), &mask, 1) == 0;
}

}  // namespace

std::unique_ptr<RawKeys> RawKeys::open(Observer observer) {
  auto keymap = loadKeymap();
  if (keymap == nullptr) return nullptr;
  Display* const display = XOpenDisplay(nullptr);
  if (display == nullptr) return nullptr;
  int opcode = 0;
  int event = 0;
  int error = 0;
  int xkbOpcode = 0;
  int xkbEvent = 0;
  int major = 2;
  int minor = 2;
  if (XQueryExtension(display, "XInputExtension", &opcode, &event, &error) == 0 ||
      XIQueryVersion(display, &major, &minor) != 0 ||
      XkbQueryExtension(display, &xkbOpcode, &xkbEvent, &error, nullptr, nullptr) == 0 || !selectRawKeys(display)) {
    XCloseDisplay(display);
    return nullptr;
  }
  return std::unique_ptr<RawKeys>(new RawKeys(display, opcode, xkbEvent, std::move(keymap), std::move(observer)));
}

RawKeys::RawKeys(_XDisplay* display, int inputOpcode, int xkbEvent, std::shared_ptr<Keymap const> keymap,
                 Observer observer)
    : display_(display),
      inputOpcode_(inputOpcode),
      xkbEvent_(xkbEvent),
      keymap_(std::move(keymap)),
      observer_(std::move(observer)) {
  constexpr unsigned long kState = XkbModifierStateMask | XkbGroupStateMask;
  XkbSelectEventDetails(display_, XkbUseCoreKbd, XkbStateNotify, kState, kState);
  constexpr unsigned kKeymap = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
  XkbSelectEvents(display_, XkbUseCoreKbd, kKeymap, kKeymap);
  XkbStateRec state{};
  XkbGetState(display_, XkbUseCoreKbd, &state);
  state_ = stateOf(state.mods, state.group);
  notifier_ = std::make_unique<QSocketNotifier>(XConnectionNumber(display_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { handleEvents(); });
  // What came with the answers wakes nobody; nobody had asked for it then either.
  while (XPending(display_) > 0) {
    XEvent ignored{};
    XNextEvent(display_, &ignored);
  }
}

RawKeys::~RawKeys() {
  notifier_.reset();
  XCloseDisplay(display_);
}

unsigned long RawKeys::focusWindow() {
  Window window = 0;
  int revert = 0;
  XGetInputFocus(display_, &window, &revert);
  return window;
}

bool RawKeys::isDown(xcb_keycode_t key) {
  std::array<char, 32> keys{};  // a bit for each key
  XQueryKeymap(display_, keys.data());
  // What came with the answer wakes nobody.
  if (XQLength(display_) > 0) QTimer::singleShot(0, notifier_.get(), [this] { handleEvents(); });
  return ((static_cast<unsigned char>(keys[key / 8U]) >> (key % 8U)) & 1U) != 0;
}

void RawKeys::handleEvents() {
  while (XPending(display_) > 0) {
    XEvent event{};
    XNextEvent(display_, &event);
    if (event.type == xkbEvent_) {
      XkbEvent notice{};
      std::memcpy(&notice, &event, sizeof event);
      if (notice.any.xkb_type == XkbStateNotify) {
        state_ = stateOf(notice.state.mods, notice.state.group);
      } else if (auto keymap = loadKeymap()) {
        keymap_ = std::move(keymap);
      }
    } else if (event.type == GenericEvent && event.xcookie.extension == inputOpcode_ &&
               XGetEventData(display_, &event.xcookie) != 0) {
      handleRaw(event.xcookie.evtype, static_cast<XIRawEvent const*>(event.xcookie.data)->detail);
      XFreeEventData(display_, &event.xcookie);
    }
  }
}

void RawKeys::handleRaw(int type, int keycode) {
  if (keycode < 0 || keycode > 255) return;
  auto const kind = type == XI_RawKeyPress ? platform::KeyEventType::down : platform::KeyEventType::up;
  observer_(keymap_->event(static_cast<xcb_keycode_t>(keycode), state_, kind));
}

}  // namespace morla::linux
