#include "platform/linux/ui/views/PickerControl.h"

#include <QAccessible>
#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

#include "platform/linux/ui/MenuStyle.h"
#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Controls.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {
namespace {

constexpr int kTextPadding = 9;
constexpr int kChevronSide = 16;
constexpr int kChevronMargin = 5;
constexpr int kLeastWidth = 72;
constexpr int kMostWidth = 200;
/// How far the list's rows begin left of the control, so that the current row's text lies on the control's.
constexpr int kListShift = 18;

QFont controlFont() {
  return toQt(view::Font{13, view::Weight::regular});
}

void paintChevrons(QPainter& painter, QRectF const& place, QPalette const& palette) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(toQt(view::SystemColour::accent, palette));
  painter.drawRoundedRect(place, 4, 4);
  QPointF const middle = place.center();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (double const way : {-1.0, 1.0}) {
    QPainterPath chevron(middle + QPointF(-2.6, way * 2));
    chevron.lineTo(middle + QPointF(0, way * 4.6));
    chevron.lineTo(middle + QPointF(2.6, way * 2));
    painter.drawPath(chevron);
  }
}

}  // namespace

PickerControl::PickerControl(QWidget* parent, std::function<void(std::size_t)> didChoose)
    : QAbstractButton(parent), didChoose_(std::move(didChoose)), list_(new QMenu(this)) {
  makeControl(*this);
  setFont(controlFont());
  // The click that closes the list does nothing else.
  list_->setAttribute(Qt::WA_NoMouseReplay);
  auto* const style = new MenuStyle(Corners::square);
  style->setParent(list_);
  list_->setStyle(style);
  QObject::connect(this, &QAbstractButton::pressed, this, [this] { openList(); });
  QObject::connect(list_, &QMenu::triggered, this, [this](QAction* action) {
    auto const rows = list_->actions();
    didChoose_(static_cast<std::size_t>(rows.indexOf(action)));
  });
}

void PickerControl::setOptions(std::vector<std::string> const& options) {
  options_.clear();
  for (auto const& option : options) options_.push_back(printable(option));
  auto const rows = list_->actions();
  for (std::size_t i = 0; i < options_.size(); ++i) {
    auto const text = QString(options_[i]).replace("&", "&&");
    auto const row = static_cast<qsizetype>(i);
    if (row >= rows.size()) {
      list_->addAction(text)->setCheckable(true);
    } else if (rows[row]->text() != text) {
      rows[row]->setText(text);
    }
  }
  for (auto row = static_cast<qsizetype>(options_.size()); row < rows.size(); ++row) delete rows[row];
  measure();
}

void PickerControl::setUnlisted(std::string const& text) {
  unlisted_ = printable(text);
  measure();
}

void PickerControl::setCurrent(std::optional<std::size_t> option) {
  current_ = option;
  auto const rows = list_->actions();
  for (qsizetype row = 0; row < rows.size(); ++row) {
    // Also after a click, which has turned the row's tick.
    rows[row]->setChecked(option.has_value() && row == static_cast<qsizetype>(*option));
  }
  announceValue();
  update();
}

QString PickerControl::value() const {
  return current_.has_value() && *current_ < options_.size() ? options_[*current_] : unlisted_;
}

QSize PickerControl::sizeHint() const {
  return {naturalWidth_, kControlHeight};
}

void PickerControl::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(kFaint);
  paintControlBody(painter, rect(), *this);
  QRectF const chevrons(width() - kChevronMargin - kChevronSide, (height() - kChevronSide) / 2.0, kChevronSide,
                        kChevronSide);
  paintChevrons(painter, chevrons, palette());
  QRectF const text(kTextPadding, 0, chevrons.left() - 2 * kChevronMargin - kTextPadding + 2, height());
  painter.setFont(font());
  painter.setPen(toQt(view::SystemColour::primary, palette()));
  painter.setClipRect(text);
  painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, fitted(value(), font(), text.width()));
  painter.setClipping(false);
  paintFocusRing(painter, rect(), kControlRadius, *this, Filling::neutral);
}

void PickerControl::hideEvent(QHideEvent*) {
  list_->close();
}

void PickerControl::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up) {
    openList();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void PickerControl::openList() {
  setDown(false);
  if (list_->isVisible() || options_.empty()) return;
  list_->setMinimumWidth(width() + kListShift);
  auto const rows = list_->actions();
  auto* const row =
      current_.has_value() && *current_ < options_.size() ? rows[static_cast<qsizetype>(*current_)] : nullptr;
  QPoint place = mapToGlobal(QPoint(-kListShift, row == nullptr ? height() : 0));
  if (row != nullptr) place.ry() += (height() - list_->actionGeometry(row).height()) / 2;
  list_->popup(place, row);
}

void PickerControl::measure() {
  int widest = widthOf(unlisted_, font());
  for (auto const& option : options_) widest = std::max(widest, widthOf(option, font()));
  naturalWidth_ = std::clamp(widest + kTextPadding + kChevronSide + 3 * kChevronMargin, kLeastWidth, kMostWidth);
  update();
}

void PickerControl::announceValue() {
  QAccessibleValueChangeEvent changed(this, value());
  QAccessible::updateAccessibility(&changed);
}

}  // namespace morla::linux
