#include "platform/linux/ui/views/TextFieldWidget.h"

#include <QEvent>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Controls.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {
namespace {

constexpr int kLeastWidth = 40;
constexpr int kNaturalWidth = 160;
constexpr int kSidePadding = 4;
constexpr int kVerticalPadding = 4;

}  // namespace

class TextFieldWidget::Control : public QLineEdit {
 public:
  explicit Control(QWidget* parent) : QLineEdit(parent) {
    setAttribute(Qt::WA_NoMousePropagation);
    setFrame(false);
    setTextMargins(kSidePadding, 0, kSidePadding, 0);
    setBodyColours();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    {
      QPainter painter(this);
      painter.setRenderHint(QPainter::Antialiasing);
      if (!isEnabled()) painter.setOpacity(kFaint);
      QColor const over = isDark(QWidget::palette()) ? Qt::white : Qt::black;
      painter.setBrush(toQt(view::SystemColour::controlBackground, QWidget::palette()));
      painter.setPen(QPen(faded(over, 0.14), 1));
      painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kControlRadius, kControlRadius);
    }
    QLineEdit::paintEvent(event);
  }

  void changeEvent(QEvent* event) override {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) setBodyColours();
  }

 private:
  /// The body is painted here; the base class paints the text alone.
  void setBodyColours() {
    QPalette own;
    own.setColor(QPalette::Base, Qt::transparent);
    if (palette().color(QPalette::Base).alpha() != 0) setPalette(own);
  }
};

TextFieldWidget::TextFieldWidget(ViewContext& context, QWidget* parent)
    : LeafWidget(context, parent), control_(new Control(this)) {
  QObject::connect(control_, &QLineEdit::textEdited, this, [this](QString const& text) {
    perform([action = content().action, now = text.toStdString()] { action(now); });
    afterTheNextTree([this] { showText(); });
  });
  QObject::connect(control_, &QLineEdit::returnPressed, this,
                   [this] { perform([action = content().onSubmit] { action(); }); });
}

void TextFieldWidget::showText() {
  auto const wanted = QString::fromStdString(content().text);
  if (control_->text() == wanted) return;
  int const cursor = control_->cursorPosition();
  bool const wasAtEnd = cursor == control_->text().size();
  control_->setText(wanted);
  if (!wasAtEnd) control_->setCursorPosition(std::min(cursor, static_cast<int>(wanted.size())));
}

void TextFieldWidget::contentDidChange() {
  control_->setFont(toQt(content().font));
  control_->setPlaceholderText(printable(content().placeholder));
  showText();
}

Needs TextFieldWidget::contentNeeds() const {
  int const height = QFontMetrics(control_->font()).height() + 2 * kVerticalPadding;
  return {QSize(kLeastWidth, height), QSize(kNaturalWidth, height)};
}

void TextFieldWidget::arrangeContent(QRect const& place) {
  control_->setGeometry(place);
}

QWidget& TextFieldWidget::accessibleWidget() {
  return *control_;
}

}  // namespace morla::linux
