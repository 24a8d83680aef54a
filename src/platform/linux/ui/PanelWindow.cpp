#include "platform/linux/ui/PanelWindow.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "platform/linux/ui/NodePainter.h"

namespace morla::linux {
namespace {

/// Without blending a pixel is there or not: from half covered on it is.
constexpr int kHalfCovered = 128;
constexpr int kTouched = 1;

/// What a screen reader calls the panel: the first label, from the outside in.
std::string firstLabel(view::Node const& node) {
  if (!node.accessibilityLabel.empty()) return node.accessibilityLabel;
  if (auto const* stack = std::get_if<view::ZStack>(&node.content)) {
    for (auto const& child : stack->children) {
      if (auto label = firstLabel(child); !label.empty()) return label;
    }
  }
  return {};
}

}  // namespace

PanelWindow::PanelWindow(std::string const& name, Opacity opacity, XClient& client, Compositor& compositor)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus),
      opacity_(opacity),
      client_(client),
      compositor_(compositor),
      compositorDidChange_(compositor.onDidChange([this] { updateShape(); })) {
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground, opacity == Opacity::translucent);
  setFocusPolicy(Qt::NoFocus);
  setWindowTitle(QString::fromStdString(name));
  client_.setClass(winId(), windowTitle());
  updateShape();
}

void PanelWindow::setContent(view::Node content) {
  content_ = std::move(content);
  setAccessibleName(QString::fromStdString(firstLabel(content_)));
  updateShape();
}

void PanelWindow::showOnTop() {
  show();
  raise();
  client_.synchronise();
}

void PanelWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintNode(painter, content_, rect());
}

void PanelWindow::resizeEvent(QResizeEvent*) {
  updateShape();
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && press_) press_(event->globalPosition());
}

void PanelWindow::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton) && drag_) drag_(event->globalPosition());
}

void PanelWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && release_) release_(event->globalPosition());
}

void PanelWindow::updateShape() {
  update();
  if (opacity_ == Opacity::opaque) return;
  Size const size{static_cast<double>(width()), static_cast<double>(height())};
  auto const drawn = renderNode(content_, size, devicePixelRatioF());
  if (compositor_.isRunning()) {
    client_.clearShape(id());
    client_.setClickableShape(id(), opaquePixels(drawn, kTouched));
  } else {
    client_.setShape(id(), opaquePixels(drawn, kHalfCovered));
    client_.clearClickableShape(id());
  }
}

}  // namespace morla::linux
