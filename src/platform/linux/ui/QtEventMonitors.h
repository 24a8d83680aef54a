#pragma once

#include <QObject>
#include <optional>

#include "base/ObserverList.h"
#include "platform/Events.h"
#include "platform/linux/ui/QtPanelHost.h"
#include "platform/linux/ui/Screens.h"
#include "platform/linux/ui/XServer.h"

class QMouseEvent;

namespace morla::linux {

/// While an event of ours is looked at, the pointer is where that event says: events come late when the program is
/// busy, and a quick press, drag and release must not look like a click at its end. Otherwise the server is asked.
class QtPointer : public platform::Pointer {
 public:
  QtPointer(Screens const& screens, XServer& server) : screens_(screens), server_(server) {}

  [[nodiscard]] BottomLeftPoint location() const override;

  /// Main thread; nested ones are put back in order.
  class AtEvent {
   public:
    AtEvent(QtPointer& pointer, GlobalPoint location);
    ~AtEvent();
    AtEvent(AtEvent const&) = delete;
    AtEvent& operator=(AtEvent const&) = delete;

   private:
    QtPointer& pointer_;
    std::optional<GlobalPoint> outer_;
  };

 private:
  Screens const& screens_;
  XServer& server_;
  std::optional<GlobalPoint> atEvent_;
};

/// Sees each mouse event once, before Qt looks for the widget that it is for. While a menu of ours is open, it is the
/// menu's own affair what a click closes or chooses.
class QtEventMonitors : public platform::EventMonitors {
 public:
  QtEventMonitors(QtPanelHost const& panels, Screens const& screens, QtPointer& pointer);
  ~QtEventMonitors() override;

  [[nodiscard]] Subscription addLocalMonitor(platform::EventMask mask, Handler handler) override;

 private:
  class Filter;

  [[nodiscard]] platform::MonitorDecision look(QWindow const& window, QMouseEvent const& event);

  QtPanelHost const& panels_;
  Screens const& screens_;
  QtPointer& pointer_;
  ObserverList<platform::MouseEvent const&, platform::MonitorDecision&> monitors_;
  std::unique_ptr<Filter> filter_;
};

}  // namespace morla::linux
