#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "base/MainLoop.h"
#include "base/Subscription.h"
#include "platform/linux/ui/Compositor.h"
#include "platform/linux/ui/XClient.h"
#include "platform/linux/ui/views/ContentView.h"
#include "view/PanelSpec.h"
#include "view/View.h"

namespace morla::linux {

class CloseButton;

/// The window of a panel: unknown to the window manager, so that showing and clicking it leaves the focus where it is
/// and that it appears on every desktop and over full-screen windows. Where its content draws nothing, it is not there:
/// blended with what is behind it where there is a compositor, cut out where there is none.
class PanelWindow : public QWidget {
 public:
  /// Where the pointer is, in Qt's coordinates of the whole desktop.
  using MouseHandler = std::function<void(QPointF pointer)>;

  /// `behaviour` outlives the window.
  PanelWindow(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop, XClient& client,
              Compositor& compositor);

  void setContent(view::Node content);

  /// With the left button, where no control wants it; the first two only where the panel can be moved.
  void onPress(MouseHandler handler) { press_ = std::move(handler); }
  void onDrag(MouseHandler handler) { drag_ = std::move(handler); }
  void onRelease(MouseHandler handler) { release_ = std::move(handler); }
  /// The close button, or Escape.
  void onCloseRequest(std::function<void()> handler) { close_ = std::move(handler); }

  [[nodiscard]] XWindowId id() const { return winId(); }

  /// Maps the window on top of all others; the server has done it when this returns.
  void showOnTop();
  /// Gives the keyboard back to whom it was taken from.
  void hideAway();

  /// Destroys the window, after the event or the action of its own that is under way.
  static void retire(PanelWindow* window);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] bool isTitled() const { return spec_.styleMask.contains(view::kTitled); }
  [[nodiscard]] bool isClosable() const { return spec_.styleMask.contains(view::kClosable); }
  [[nodiscard]] bool canMoveFrom(QPointF place) const;
  [[nodiscard]] bool handle(view::PanelEvent kind, QObject& receiver, QEvent& event);
  /// The list that the press opened has gone, and with it the release that the panel has not seen.
  void endClickOf(QObject& menu);
  void takeKeyboard();
  void didChangeLook();
  void updateShape();

  view::PanelSpec spec_;
  view::PanelBehaviour& behaviour_;
  XClient& client_;
  Compositor& compositor_;
  ContentView* content_;
  CloseButton* closeButton_ = nullptr;
  MouseHandler press_;
  MouseHandler drag_;
  MouseHandler release_;
  std::function<void()> close_;
  bool isShaping_ = false;
  bool isDragging_ = false;
  bool wasPressPassedOn_ = true;
  int eventsUnderWay_ = 0;
  /// Who had the keyboard before a click gave it to this window.
  XWindowId focusBefore_ = 0;
  Subscription compositorDidChange_;
};

struct PanelWindowRetiring {
  void operator()(PanelWindow* window) const { PanelWindow::retire(window); }
};

}  // namespace morla::linux
