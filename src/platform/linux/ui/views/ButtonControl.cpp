#include "platform/linux/ui/views/ButtonControl.h"

#include <QPainter>
#include <algorithm>

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

ButtonControl::ButtonControl(QWidget* parent) : QPushButton(parent) {
  makeControl(*this);
}

void ButtonControl::show(view::Button const& button) {
  style_ = button.style;
  title_ = printable(button.title);
  // An ampersand alone would be a shortcut's mark, and missing from the name.
  setText(QString(title_).replace("&", "&&"));
  setFont(toQt(view::Font{kTitleSize, isProminent() ? view::Weight::medium : view::Weight::regular}));
  update();
}

QSize ButtonControl::sizeHint() const {
  return {std::max(kLeastWidth, widthOf(title_, font()) + 2 * kSidePadding), kControlHeight};
}

void ButtonControl::paintEvent(QPaintEvent*) {
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
  paintFocusRing(painter, rect(), kControlRadius, *this, isProminent() ? Filling::accent : Filling::neutral);
}

void ButtonControl::paintProminentBody(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(toQt(view::SystemColour::accent, palette()));
  painter.drawRoundedRect(rect(), kControlRadius, kControlRadius);
  double const shade = isDown() ? 0.18 : isEnabled() && underMouse() ? 0.07 : 0;
  painter.setBrush(faded(Qt::black, shade));
  painter.drawRoundedRect(rect(), kControlRadius, kControlRadius);
}

}  // namespace morla::linux
