#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "base/Subscription.h"
#include "platform/linux/ui/Compositor.h"
#include "platform/linux/ui/XClient.h"
#include "view/View.h"

namespace morla::linux {

enum class Opacity { opaque, translucent };

/// The window of a panel: unknown to the window manager, so that showing and clicking it leaves the focus where it is
/// and that it appears on every desktop and over full-screen windows. Where its content draws nothing, it is not there:
/// blended with what is behind it where there is a compositor, cut out where there is none.
class PanelWindow : public QWidget {
 public:
  /// Where the pointer is, in Qt's coordinates of the whole desktop.
  using MouseHandler = std::function<void(QPointF pointer)>;

  /// `name` is the window's title and class.
  PanelWindow(std::string const& name, Opacity opacity, XClient& client, Compositor& compositor);

  void setContent(view::Node content);

  /// With the left button.
  void onPress(MouseHandler handler) { press_ = std::move(handler); }
  void onDrag(MouseHandler handler) { drag_ = std::move(handler); }
  void onRelease(MouseHandler handler) { release_ = std::move(handler); }

  [[nodiscard]] XWindowId id() const { return winId(); }

  /// Maps the window on top of all others; the server has done it when this returns.
  void showOnTop();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void updateShape();

  Opacity opacity_;
  XClient& client_;
  Compositor& compositor_;
  view::Node content_;
  MouseHandler press_;
  MouseHandler drag_;
  MouseHandler release_;
  Subscription compositorDidChange_;
};

}  // namespace morla::linux
