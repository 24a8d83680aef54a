#include "platform/linux/input/QtKeyMonitors.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QObject>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "base/Log.h"
#include "base/MainThread.h"

namespace morla::linux {
namespace {

/// Qt itself learns a little late that its window has lost the focus.
bool isOurs(unsigned long window) {
  auto const windows = QGuiApplication::topLevelWindows();
  return std::any_of(windows.begin(), windows.end(),
                     [window](QWindow const* each) { return each->handle() != nullptr && each->winId() == window; });
}

}  // namespace

class QtKeyMonitors::Filter : public QObject {
 public:
  explicit Filter(QtKeyMonitors& monitors) : monitors_(monitors) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::ShortcutOverride:
        // Before a key reaches the window, Qt asks whether it may be a shortcut; the monitors come first.
        if (monitors_.locals_.size() == 0) return false;
        event->accept();
        return true;
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
        // Qt gives a key to the window and then to the widgets in it; the window is where it comes by once.
        return receiver->isWindowType() && monitors_.look(*event);
      default:
        return false;
    }
  }

 private:
  QtKeyMonitors& monitors_;
};

QtKeyMonitors::QtKeyMonitors(MainLoop& loop) : loop_(loop) {}

QtKeyMonitors::~QtKeyMonitors() = default;

Subscription QtKeyMonitors::addLocalMonitor(platform::EventMask mask, LocalHandler handler) {
  assertIsMainThread();
  auto shared = std::make_shared<Subscription>(
      locals_.add([mask, handler = std::move(handler)](auto const& event, auto& decision) {
        // What one monitor consumed, no other sees.
        if (decision == platform::MonitorDecision::pass && mask.contains(maskOf(event.type))) decision = handler(event);
      }));
  update();
  return Subscription(life_.weak([this, shared] {
    shared->end();
    updateLater();
  }));
}

Subscription QtKeyMonitors::addGlobalMonitor(platform::EventMask mask, GlobalHandler handler) {
  assertIsMainThread();
  auto shared = std::make_shared<Subscription>(globals_.add([mask, handler = std::move(handler)](auto const& event) {
    if (mask.contains(maskOf(event.type))) handler(event);
  }));
  update();
  return Subscription(life_.weak([this, shared] {
    shared->end();
    updateLater();
  }));
}

void QtKeyMonitors::update() {
  if (locals_.size() + globals_.size() == 0) {
    filter_.reset();
    keys_.reset();
    return;
  }
  if (keys_ != nullptr) return;
  keys_ = RawKeys::open([this](platform::KeyEvent const& event) {
    // Those for our own windows are the local monitors' affair.
    if (!isOurs(keys_->focusWindow())) globals_.call(event);
  });
  if (keys_ == nullptr) {
    log("Keyboard", "the X server does not tell about keys: no shortcut can be recorded");
    return;
  }
  filter_ = std::make_unique<Filter>(*this);
}

void QtKeyMonitors::updateLater() {
  loop_.post(life_.weak([this] { update(); }));
}

bool QtKeyMonitors::look(QEvent const& event) {
  auto const& key = static_cast<QKeyEvent const&>(event);
  auto const code = key.nativeScanCode();
  if (code == 0 || code > 255) return false;
  // Qt lets a key that repeats come up before each repeat, which no finger does, and does not always know that it
  // repeats.
  if (event.type() == QEvent::KeyRelease && keys_->isDown(static_cast<xcb_keycode_t>(code))) return locals_.size() > 0;
  auto seen = keys_->keymap().event(
      static_cast<xcb_keycode_t>(code), static_cast<std::uint16_t>(key.nativeModifiers()),
      event.type() == QEvent::KeyPress ? platform::KeyEventType::down : platform::KeyEventType::up);
  seen.isAutoRepeat = key.isAutoRepeat();
  auto decision = platform::MonitorDecision::pass;
  locals_.call(seen, decision);
  return decision == platform::MonitorDecision::consume;
}

}  // namespace morla::linux
