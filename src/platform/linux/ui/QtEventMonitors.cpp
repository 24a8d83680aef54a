#include "platform/linux/ui/QtEventMonitors.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWindow>
#include <utility>

#include "base/MainThread.h"
#include "platform/linux/ui/QtPanel.h"

namespace morla::linux {
namespace {

std::optional<platform::MouseEventKind> kindOf(QMouseEvent const& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
      if (event.button() == Qt::LeftButton) return platform::MouseEventKind::leftDown;
      if (event.button() == Qt::RightButton) return platform::MouseEventKind::rightDown;
      return std::nullopt;
    case QEvent::MouseButtonRelease:
      if (event.button() == Qt::LeftButton) return platform::MouseEventKind::leftUp;
      return std::nullopt;
    case QEvent::MouseMove:
      if (event.buttons().testFlag(Qt::LeftButton)) return platform::MouseEventKind::leftDragged;
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

BottomLeftPoint QtPointer::location() const {
  assertIsMainThread();
  if (atEvent_.has_value()) return screens_.flip().toBottomLeft(*atEvent_);
  auto const pixel = server_.pointer();
  return screens_.flip().toBottomLeft(GlobalPoint{pixel.x / screens_.scale(), pixel.y / screens_.scale()});
}

QtPointer::AtEvent::AtEvent(QtPointer& pointer, GlobalPoint location)
    : pointer_(pointer), outer_(std::exchange(pointer.atEvent_, location)) {}

QtPointer::AtEvent::~AtEvent() {
  pointer_.atEvent_ = outer_;
}

/// Qt gives an event to the window first and then to the widgets in it, one after the other as long as nobody wants
/// it; the window is where it comes by exactly once.
class QtEventMonitors::Filter : public QObject {
 public:
  explicit Filter(QtEventMonitors& monitors) : monitors_(monitors) {}

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (!receiver->isWindowType()) return false;
    bool const isOfMenu = belongsToMenu(*event);
    if (QApplication::activePopupWidget() != nullptr) return false;
    // The rest of the press that closed a menu: nobody below the menu has seen it begin.
    if (isOfMenu) return true;
    switch (event->type()) {
      case QEvent::MouseButtonPress:
        lastPress_ = look(receiver, event);
        return lastPress_ == platform::MonitorDecision::consume;
      case QEvent::MouseButtonDblClick:
        // The second press of two quick ones came by as an ordinary one a moment ago, and this is what widgets get.
        return lastPress_ == platform::MonitorDecision::consume;
      case QEvent::MouseButtonRelease:
      case QEvent::MouseMove:
        return look(receiver, event) == platform::MonitorDecision::consume;
      default:
        return false;
    }
  }

 private:
  platform::MonitorDecision look(QObject* window, QEvent* event) {
    return monitors_.look(static_cast<QWindow const&>(*window), static_cast<QMouseEvent const&>(*event));
  }

  /// Whether the button went down while a menu was open, from there to its release.
  bool belongsToMenu(QEvent const& event) {
    switch (event.type()) {
      case QEvent::MouseButtonPress:
        menuButtons_.setFlag(buttonOf(event), QApplication::activePopupWidget() != nullptr);
        return false;
      case QEvent::MouseMove:
        return (static_cast<QMouseEvent const&>(event).buttons() & menuButtons_) != Qt::NoButton;
      case QEvent::MouseButtonRelease: {
        bool const belongs = menuButtons_.testFlag(buttonOf(event));
        menuButtons_.setFlag(buttonOf(event), false);
        return belongs;
      }
      default:
        return false;
    }
  }

  static Qt::MouseButton buttonOf(QEvent const& event) { return static_cast<QMouseEvent const&>(event).button(); }

  platform::MonitorDecision lastPress_ = platform::MonitorDecision::pass;
  Qt::MouseButtons menuButtons_;
  QtEventMonitors& monitors_;
};

QtEventMonitors::QtEventMonitors(QtPanelHost const& panels, Screens const& screens, QtPointer& pointer)
    : panels_(panels), screens_(screens), pointer_(pointer), filter_(std::make_unique<Filter>(*this)) {
  qApp->installEventFilter(filter_.get());
}

QtEventMonitors::~QtEventMonitors() = default;

Subscription QtEventMonitors::addLocalMonitor(platform::EventMask mask, Handler handler) {
  assertIsMainThread();
  return monitors_.add([mask, handler = std::move(handler)](auto const& event, auto& decision) {
    // What one monitor consumed, no other sees.
    if (decision == platform::MonitorDecision::pass && mask.contains(maskOf(event.kind))) decision = handler(event);
  });
}

platform::MonitorDecision QtEventMonitors::look(QWindow const& window, QMouseEvent const& event) {
  auto decision = platform::MonitorDecision::pass;
  auto const kind = kindOf(event);
  if (!kind.has_value() || monitors_.size() == 0) return decision;
  auto const position = event.position();
  platform::MouseEvent const seen{*kind, panels_.panelOf(&window), {position.x(), window.height() - position.y()}};
  QtPointer::AtEvent const here(pointer_, screens_.fromQt(event.globalPosition()));
  monitors_.call(seen, decision);
  return decision;
}

}  // namespace morla::linux
