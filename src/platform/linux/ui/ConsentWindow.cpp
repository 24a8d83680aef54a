#include "platform/linux/ui/ConsentWindow.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <memory>
#include <utility>

#include "base/MainThread.h"
#include "platform/linux/ui/XClient.h"
#include "platform/linux/ui/views/ButtonControl.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {
namespace {

// In points, on a rhythm of eight.
constexpr int kMargin = 24;
constexpr int kIconSize = 48;
constexpr int kIconGap = 16;
constexpr int kTextWidth = 320;
constexpr int kButtonGap = 8;
constexpr double kTextSize = 13;
constexpr double kSmallTextSize = 12;
constexpr int kButtonWidth = 88;
/// Well above the middle, where the alert settings open: as every panel, they stand above a managed window.
constexpr double kPartAbove = 0.12;

QLabel* makeLabel(QString const& text, QFont const& font, QWidget* parent) {
  auto* const label = new QLabel(text, parent);
  label->setFont(font);
  // The application's name is its own business, and no markup.
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setFixedWidth(kTextWidth);
  return label;
}

/// One that has the keyboard is pressed by Return as well as by the space bar.
ButtonControl* makeButton(view::Button const& button, QWidget* parent) {
  auto* const made = new ButtonControl(parent);
  made->show(button);
  made->setAutoDefault(true);
  made->setMinimumWidth(kButtonWidth);
  made->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return made;
}

/// A closed padlock on a rounded square.
void drawPadlock(QPainter& painter, QRectF const& square, QColor const& colour) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(square.topLeft());
  painter.scale(square.width() / 48, square.height() / 48);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawRoundedRect(QRectF(0, 0, 48, 48), 11, 11);
  QPainterPath shackle;
  shackle.moveTo(17.5, 23);
  shackle.lineTo(17.5, 17.5);
  shackle.arcTo(QRectF(17.5, 11, 13, 13), 180, -180);
  shackle.lineTo(30.5, 23);
  painter.strokePath(shackle, QPen(Qt::white, 3, Qt::SolidLine, Qt::FlatCap));
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(QRectF(13, 22, 22, 15), 3, 3);
}

}  // namespace

ConsentWindow::ConsentWindow(std::string const& targetName, Answered answered)
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                           Qt::WindowStaysOnTopHint),
      answered_(std::move(answered)) {
  auto const target = QString::fromStdString(targetName);
  setWindowTitle("Autorisation");
  setFocusPolicy(Qt::StrongFocus);

  question_ = makeLabel("MORLA souhaite contrôler « " + target + " »",
                        toQt(view::Font{kTextSize, view::Weight::semibold}), this);
  explanation_ = makeLabel("MORLA pourra lire les réglages de « " + target + " » et utiliser ses fonctions. " +
                               "Votre choix reste modifiable dans « Confidentialité ».",
                           toQt(view::Font{kSmallTextSize, view::Weight::regular}), this);
  setAccessibleName(question_->text());
  setAccessibleDescription(explanation_->text());
  auto* const refuse = makeButton({"Refuser", view::ButtonStyle::bordered}, this);
  auto* const allow = makeButton({"OK", view::ButtonStyle::prominent}, this);
  connect(refuse, &QAbstractButton::clicked, this, [this] { answer(Consent::refuse); });
  connect(allow, &QAbstractButton::clicked, this, [this] { answer(Consent::allow); });

  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(kButtonGap);
  buttons->addStretch();
  buttons->addWidget(refuse);
  buttons->addWidget(allow);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin + kIconSize + kIconGap, kMargin, kMargin, kMargin - 4);
  rows->setSpacing(0);
  rows->addWidget(question_);
  rows->addSpacing(6);
  rows->addWidget(explanation_);
  rows->addSpacing(20);
  rows->addLayout(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  setTabOrder(refuse, allow);
  colourTexts();
}

void ConsentWindow::present() {
  auto const* screen = QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  if (screen != nullptr) {
    auto const area = screen->availableGeometry();
    auto const size = sizeHint();
    move(area.x() + (area.width() - size.width()) / 2,
         area.y() + static_cast<int>((area.height() - size.height()) * kPartAbove));
  }
  show();
  raise();
  activateWindow();
  setFocus();
}

void ConsentWindow::withdraw() {
  answered_ = nullptr;
  hide();
}

void ConsentWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), toQt(view::SystemColour::windowBackground, palette()));
  drawPadlock(painter, QRectF(kMargin, kMargin, kIconSize, kIconSize), toQt(view::SystemColour::accent, palette()));
}

void ConsentWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && question_ != nullptr) colourTexts();
  QWidget::changeEvent(event);
}

void ConsentWindow::colourTexts() {
  for (auto const& [label, kind] :
       {std::pair(question_, view::SystemColour::primary), std::pair(explanation_, view::SystemColour::secondary)}) {
    auto const colour = toQt(kind, palette());
    QPalette own = label->palette();
    if (own.color(QPalette::WindowText) == colour) continue;
    own.setColor(QPalette::WindowText, colour);
    label->setPalette(own);
  }
}

void ConsentWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  answer(std::nullopt);
}

void ConsentWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void ConsentWindow::answer(std::optional<Consent> consent) {
  auto const answered = std::exchange(answered_, nullptr);
  if (answered) answered(consent);
}

namespace {

/// The keyboard for a window of this program once it is on the screen. The toolkit asks with the time of the user's
/// last key or click in a window of this program, and the server refuses what is older than the last change of the
/// focus.
class KeyboardOnceShown final : public QObject {
 public:
  explicit KeyboardOnceShown(QWindow* window) : QObject(window) { window->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* const window = static_cast<QWindow*>(watched);
    if (event->type() == QEvent::Expose && window->isExposed()) {
      window->removeEventFilter(this);
      deleteLater();
      XClient().activate(window->winId());
    }
    return false;
  }
};

}  // namespace

Subscription askForConsent(std::string const& targetName, ConsentWindow::Answered answered) {
  assertIsMainThread();
  // It may be in the middle of an event of its own when it is taken away.
  std::shared_ptr<ConsentWindow> const window(new ConsentWindow(targetName, std::move(answered)),
                                              [](ConsentWindow* ended) { ended->deleteLater(); });
  window->present();
  new KeyboardOnceShown(window->windowHandle());
  return Subscription([window] { window->withdraw(); });
}

}  // namespace morla::linux
