#include "platform/linux/ui/DialogButton.h"

#include <QFocusEvent>
#include <QFont>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "platform/linux/ui/DialogColours.h"

namespace morla::linux {
namespace {

// In points.
constexpr int kHeight = 26;
constexpr int kPadding = 16;
constexpr int kShortest = 88;
constexpr double kRadius = 6;
constexpr int kFocusRing = 3;
constexpr float kRingOpacity = 0.4F;
constexpr int kTextSize = 13;

}  // namespace

DialogButton::DialogButton(QString const& text, Kind kind, QWidget* parent) : QAbstractButton(parent), kind_(kind) {
  QFont font;
  font.setFamilies(QStringList{"Inter"} + font.families());
  font.setPixelSize(kTextSize);
  font.setWeight(QFont::Medium);
  setFont(font);
  setText(text);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DialogButton::sizeHint() const {
  // The ring is part of the widget, which cannot draw outside itself.
  int const width = std::max(kShortest, QFontMetrics(font()).horizontalAdvance(text()) + 2 * kPadding);
  return {width + 2 * kFocusRing, kHeight + 2 * kFocusRing};
}

void DialogButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  auto const colours = DialogColours::of(palette());
  auto const body = QRectF(rect()).adjusted(kFocusRing, kFocusRing, -kFocusRing, -kFocusRing);
  bool const isProminent = kind_ == Kind::prominent;
  if (showsFocus_ && hasFocus()) {
    QColor ring = colours.accent;
    ring.setAlphaF(kRingOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ring);
    painter.drawRoundedRect(rect(), kRadius + kFocusRing, kRadius + kFocusRing);
  }
  QColor fill = isProminent ? colours.accent : colours.control;
  if (isDown()) {
    fill = isProminent ? colours.pressedAccent : fill.darker(112);
  } else if (underMouse()) {
    fill = isProminent ? fill.lighter(108) : fill.darker(104);
  }
  painter.setBrush(fill);
  painter.setPen(isProminent ? QPen(Qt::NoPen) : QPen(colours.hairline, 1));
  painter.drawRoundedRect(isProminent ? body : body.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  painter.setPen(isProminent ? QColor(Qt::white) : colours.text);
  painter.setFont(font());
  painter.drawText(body, Qt::AlignCenter | Qt::TextSingleLine, text());
}

void DialogButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void DialogButton::focusInEvent(QFocusEvent* event) {
  showsFocus_ = event->reason() != Qt::MouseFocusReason;
  QAbstractButton::focusInEvent(event);
}

}  // namespace morla::linux
