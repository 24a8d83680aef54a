#include "platform/linux/ui/PanelWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/linux/ui/DrawingPainter.h"
#include "platform/linux/ui/TitleBar.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/RoundedShape.h"

namespace morla::linux {
namespace {

/// Without blending a pixel is there or not: from half covered on it is.
constexpr int kHalfCovered = 128;
constexpr int kTouched = 1;

constexpr double kWindowRadius = 14;
/// How much of the window's colour covers what is behind: less would let letters through, since nothing blurs them.
constexpr double kWindowOpacity = 0.95;

bool hasRoundCorners(view::PanelSpec const& spec) {
  return spec.styleMask.contains(view::kTitled);
}

/// What a screen reader calls a panel without a title: the first label, from the outside in.
std::string firstLabel(view::Node const& node) {
  if (!node.accessibilityLabel.empty()) return node.accessibilityLabel;
  if (auto const* stack = std::get_if<view::ZStack>(&node.content)) {
    for (auto const& child : stack->children) {
      if (auto label = firstLabel(child); !label.empty()) return label;
    }
  }
  return {};
}

std::optional<view::PanelEvent> kindOf(QEvent const& event) {
  using view::PanelEvent;
  bool const isPress = event.type() == QEvent::MouseButtonPress;
  if (!isPress && event.type() != QEvent::MouseButtonRelease) return std::nullopt;
  switch (static_cast<QMouseEvent const&>(event).button()) {
    case Qt::LeftButton:
      return isPress ? PanelEvent::leftMouseDown : PanelEvent::leftMouseUp;
    case Qt::RightButton:
      return isPress ? PanelEvent::rightMouseDown : PanelEvent::rightMouseUp;
    default:
      return isPress ? PanelEvent::otherMouseDown : PanelEvent::otherMouseUp;
  }
}

Qt::WindowFlags flagsOf(view::PanelBehaviour const& behaviour) {
  Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::BypassWindowManagerHint;
  flags.setFlag(Qt::WindowDoesNotAcceptFocus, !behaviour.canBecomeKey());
  return flags;
}

}  // namespace

PanelWindow::PanelWindow(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop, XClient& client,
                         Compositor& compositor)
    : QWidget(nullptr, flagsOf(behaviour)),
      spec_(spec),
      behaviour_(behaviour),
      client_(client),
      compositor_(compositor),
      content_(new ContentView(loop, this)),
      compositorDidChange_(compositor.onDidChange([this] { didChangeLook(); })) {
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground, !spec.isOpaque || hasRoundCorners(spec));
  setFocusPolicy(Qt::NoFocus);
  auto const name = QString::fromStdString(spec.name);
  setWindowTitle(spec.title.empty() ? name : QString::fromStdString(spec.title));
  setAccessibleName(QString::fromStdString(spec.title));
  client_.setClass(winId(), name);
  windowHandle()->installEventFilter(this);
  content_->onDidArrange([this] { didChangeLook(); });
  if (isTitled() && isClosable()) {
    closeButton_ = new CloseButton(this);
    QObject::connect(closeButton_, &QAbstractButton::clicked, this, [this] {
      if (close_) close_();
    });
  }
}

void PanelWindow::setContent(view::Node content) {
  if (spec_.title.empty()) {
    // The toolkit would tell screen readers each time.
    auto const name = QString::fromStdString(firstLabel(content));
    if (name != accessibleName()) setAccessibleName(name);
  }
  content_->setTree(content);
}

void PanelWindow::showOnTop() {
  // Before it is seen.
  updateShape();
  show();
  raise();
  client_.synchronise();
}

void PanelWindow::hideAway() {
  bool const hadKeyboard = behaviour_.canBecomeKey() && client_.focus() == id();
  // First: where a window with the keyboard goes, the window manager may choose a window, or none, after us.
  if (hadKeyboard) client_.setFocus(focusBefore_);
  hide();
  client_.synchronise();
}

void PanelWindow::retire(PanelWindow* window) {
  if (window->isVisible()) window->hideAway();
  window->press_ = nullptr;
  window->drag_ = nullptr;
  window->release_ = nullptr;
  window->close_ = nullptr;
  if (window->eventsUnderWay_ > 0 || window->content_->isActing()) {
    window->windowHandle()->removeEventFilter(window);
    window->deleteLater();
  } else {
    delete window;
  }
}

bool PanelWindow::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver != windowHandle()) {
    if (event->type() == QEvent::Hide) endClickOf(*receiver);
    return QWidget::eventFilter(receiver, event);
  }
  // A menu that a control has opened has the pointer to itself.
  if (QApplication::activePopupWidget() != nullptr) return false;
  // The second press of two quick ones came by as an ordinary one a moment ago.
  if (event->type() == QEvent::MouseButtonDblClick) return !wasPressPassedOn_;
  auto const kind = kindOf(*event);
  return kind.has_value() && handle(*kind, *receiver, *event);
}

bool PanelWindow::handle(view::PanelEvent kind, QObject& receiver, QEvent& event) {
  bool const isPress = event.type() == QEvent::MouseButtonPress;
  if (isPress && behaviour_.canBecomeKey()) takeKeyboard();
  bool wasPassedOn = false;
  ++eventsUnderWay_;
  behaviour_.sendEvent(kind, [&] {
    // The window itself, past the filters: this one has seen the event.
    if (!std::exchange(wasPassedOn, true)) receiver.event(&event);
  });
  --eventsUnderWay_;
  if (isPress) {
    wasPressPassedOn_ = wasPassedOn;
    if (auto* const menu = QApplication::activePopupWidget()) menu->installEventFilter(this);
  }
  return true;
}

void PanelWindow::endClickOf(QObject& menu) {
  menu.removeEventFilter(this);
  ++eventsUnderWay_;
  behaviour_.sendEvent(view::PanelEvent::leftMouseUp, [] {});
  --eventsUnderWay_;
}

void PanelWindow::takeKeyboard() {
  auto const focus = client_.focus();
  if (focus == id()) return;
  focusBefore_ = focus;
  client_.setFocus(id());
}

void PanelWindow::paintEvent(QPaintEvent*) {
  if (!isTitled()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  auto const window = toQt(view::SystemColour::windowBackground, palette());
  painter.fillPath(roundedShape(rect(), kWindowRadius, view::Corners::continuous),
                   faded(window, compositor_.isRunning() ? kWindowOpacity : 1));
  QRectF const edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QPen(toQt(view::SystemColour::separator, palette()), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(roundedShape(edge, kWindowRadius - 0.5, view::Corners::continuous));
  if (!spec_.hasTransparentTitleBar) {
    paintTitle(painter, QRectF(0, 0, width(), view::kTitleBarHeight), QString::fromStdString(spec_.title), palette());
  }
}

void PanelWindow::resizeEvent(QResizeEvent*) {
  int const bar =
      isTitled() && !spec_.styleMask.contains(view::kFullSizeContentView) ? static_cast<int>(view::kTitleBarHeight) : 0;
  content_->setGeometry(0, bar, width(), height() - bar);
  didChangeLook();
}

bool PanelWindow::canMoveFrom(QPointF place) const {
  return spec_.isMovableByBackground || (isTitled() && place.y() < view::kTitleBarHeight);
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  isDragging_ = press_ && canMoveFrom(event->position());
  if (isDragging_) press_(event->globalPosition());
}

void PanelWindow::mouseMoveEvent(QMouseEvent* event) {
  if (isDragging_ && event->buttons().testFlag(Qt::LeftButton) && drag_) drag_(event->globalPosition());
}

void PanelWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && release_) release_(event->globalPosition());
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && isClosable() && close_) {
    ++eventsUnderWay_;
    close_();
    --eventsUnderWay_;
  } else {
    QWidget::keyPressEvent(event);
  }
}

void PanelWindow::didChangeLook() {
  update();
  if (isVisible()) updateShape();
}

void PanelWindow::updateShape() {
  // To be painted, hidden widgets are first told their sizes, which changes the look again.
  if (isShaping_ || !testAttribute(Qt::WA_TranslucentBackground)) return;
  double const scale = devicePixelRatioF();
  QImage drawn(static_cast<int>(std::lround(width() * scale)), static_cast<int>(std::lround(height() * scale)),
               QImage::Format_ARGB32_Premultiplied);
  if (drawn.isNull()) return;
  drawn.setDevicePixelRatio(scale);
  drawn.fill(Qt::transparent);
  isShaping_ = true;
  QPainter painter(&drawn);
  render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
  painter.end();
  isShaping_ = false;
  if (compositor_.isRunning()) {
    client_.clearShape(id());
    client_.setClickableShape(id(), opaquePixels(drawn, kTouched));
  } else {
    client_.setShape(id(), opaquePixels(drawn, kHalfCovered));
    client_.clearClickableShape(id());
  }
}

}  // namespace morla::linux
