#include "platform/linux/ui/views/ButtonWidget.h"

#include <QPainter>
#include <QPushButton>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Controls.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {
namespace {

constexpr int kSidePadding = 14;
constexpr int kLeastPadding = 4;
constexpr int kLeastWidth = 64;
constexpr double kTitleSize = 13;

}  // namespace

class ButtonWidget::Control : public QPushButton {
 public:
  explicit Control(QWidget* parent) : QPushButton(parent) { makeControl(*this); }

  void show(view::Button const& button) {
    style_ = button.style;
    title_ = printable(button.title);
    // An ampersand alone would be a shortcut's mark, and missing from the name.
    setText(QString(title_).replace("&", "&&"));
    setFont(toQt(view::Font{kTitleSize, isProminent() ? view::Weight::medium : view::Weight::regular}));
    update();
  }

  [[nodiscard]] int naturalWidth() const { return std::max(kLeastWidth, widthOf(title_, font()) + 2 * kSidePadding); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(kFaint);
    if (isProminent()) {
      paintProminentBody(painter);
    } else {
      paintControlBody(painter, rect(), *this);
    }
    painter.setFont(font());
    painter.setPen(isProminent() ? QColor(Qt::white) : toQt(view::SystemColour::primary, palette()));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, fitted(title_, font(), width() - 2 * kLeastPadding));
    paintFocusRing(painter, rect(), kControlRadius, *this);
  }

 private:
  [[nodiscard]] bool isProminent() const { return style_ == view::ButtonStyle::prominent; }

  void paintProminentBody(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQt(view::SystemColour::accent, palette()));
    painter.drawRoundedRect(rect(), kControlRadius, kControlRadius);
    double const shade = isDown() ? 0.18 : isEnabled() && underMouse() ? 0.07 : 0;
    painter.setBrush(faded(Qt::black, shade));
    painter.drawRoundedRect(rect(), kControlRadius, kControlRadius);
  }

  view::ButtonStyle style_ = view::ButtonStyle::bordered;
  QString title_;
};

ButtonWidget::ButtonWidget(ViewContext& context, QWidget* parent)
    : LeafWidget(context, parent), control_(new Control(this)) {
  QObject::connect(control_, &QPushButton::clicked, this,
                   [this] { perform([action = content().action] { action(); }); });
}

void ButtonWidget::contentDidChange() {
  control_->show(content());
}

Needs ButtonWidget::contentNeeds() const {
  QSize const natural(control_->naturalWidth(), kControlHeight);
  return {QSize(kControlHeight, kControlHeight), natural};
}

void ButtonWidget::arrangeContent(QRect const& place) {
  control_->setGeometry(place);
}

QWidget& ButtonWidget::accessibleWidget() {
  return *control_;
}

}  // namespace morla::linux
