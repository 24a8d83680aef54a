#include "captureone/window/Style.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QFrame>
#include <QPainter>
#include <QPalette>
#include <QStyleFactory>
#include <QStyleOptionComboBox>
#include <QStylePainter>

// A static library's resources are left out unless somebody asks for them, and not from within a namespace.
static void initializeResources() {
  Q_INIT_RESOURCE(resources);
}

namespace morla::captureone::style {
namespace {

QPalette darkPalette() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0x2A, 0x2A, 0x2A));
  palette.setColor(QPalette::Base, QColor(0x22, 0x22, 0x22));
  palette.setColor(QPalette::Button, QColor(0x3D, 0x3D, 0x3D));
  for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, QColor(0xE4, 0xE4, 0xE4));
  }
  palette.setColor(QPalette::Highlight, QColor(0x0A, 0x5F, 0xBF));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(0x8E, 0x8E, 0x8E));
  return palette;
}

char const* nameOf(Tone tone) {
  switch (tone) {
    case Tone::primary:
      return "primary";
    case Tone::secondary:
      return "secondary";
    case Tone::heading:
      return "heading";
    case Tone::title:
      return "title";
  }
  return "";
}

class WheelFilter final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();  // so that it goes on to the parent
    return true;
  }
};

/// Cuts a value that is too long with an ellipsis; the style would cut it anywhere.
class Combo final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (isEditable()) {
      QComboBox::paintEvent(event);
      return;
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    auto const room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    auto const text = option.currentText.isEmpty() ? placeholderText() : option.currentText;
    option.currentText = fontMetrics().elidedText(text, Qt::ElideRight, room.width() - 4);
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
  }
};

}  // namespace

void leaveWheelToTheColumn(QWidget* control) {
  control->installEventFilter(new WheelFilter(control));
}

void apply(QApplication& application) {
  initializeResources();
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(darkPalette());
  if (QFontDatabase::families().contains(QStringLiteral("Inter"))) {
    QApplication::setFont(QFont(QStringLiteral("Inter")));
  }
  QFile sheet(QStringLiteral(":/captureone/style.qss"));
  if (sheet.open(QIODevice::ReadOnly)) application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

QLabel* label(QString const& text, Tone tone, QWidget* parent) {
  auto* made = new QLabel(text, parent);
  made->setProperty("tone", QString::fromLatin1(nameOf(tone)));
  made->setTextFormat(Qt::PlainText);
  return made;
}

QWidget* separator(QWidget* parent) {
  auto* line = new QFrame(parent);
  line->setObjectName(QStringLiteral("separator"));
  line->setFixedHeight(1);
  return line;
}

QComboBox* combo(QString const& name, QWidget* parent) {
  auto* made = new Combo(parent);
  made->setAccessibleName(name);
  made->setAccessibleDescription(name);
  made->setMinimumContentsLength(6);
  leaveWheelToTheColumn(made);
  made->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  return made;
}

Switch::Switch(QString const& name, QWidget* parent) : QCheckBox(parent) {
  setAccessibleName(name);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const {
  return {42, 26};
}

bool Switch::hitButton(QPoint const& position) const {
  return rect().contains(position);
}

void Switch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF const track(2, 2, 38, 22);
  painter.setPen(Qt::NoPen);
  painter.setBrush(isChecked() ? QColor(0x30, 0xD1, 0x58) : QColor(0x58, 0x58, 0x58));
  if (!isEnabled()) painter.setOpacity(0.4);
  painter.drawRoundedRect(track, 11, 11);
  painter.setBrush(Qt::white);
  painter.drawEllipse(QRectF(isChecked() ? track.right() - 20 : track.left() + 2, track.top() + 2, 18, 18));
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x3E, 0x8F, 0xE8), 1.5));
    painter.drawRoundedRect(track.adjusted(-1, -1, 1, 1), 12, 12);
  }
}

}  // namespace morla::captureone::style
