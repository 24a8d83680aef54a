#include "platform/linux/ui/views/TextWidget.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {

QString TextWidget::spoken() const {
  QString all;
  for (auto const& line : lines_) {
    if (!all.isEmpty()) all += ' ';
    all += line;
  }
  return all;
}

void TextWidget::contentDidChange() {
  lines_ = printableLines(content().text);
  setFont(toQt(content().font));
  fittedWidth_ = -1;
  int width = 0;
  for (auto const& line : lines_) width = std::max(width, widthOf(line, font()));
  auto const height = QFontMetricsF(font()).lineSpacing() * static_cast<double>(lines_.size());
  natural_ = QSize(width, static_cast<int>(std::ceil(height)));
  QAccessibleEvent renamed(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&renamed);
}

Needs TextWidget::contentNeeds() const {
  static QString const ellipsis(QChar(0x2026));
  return {QSize(std::min(natural_.width(), widthOf(ellipsis, font())), natural_.height()), natural_};
}

void TextWidget::arrangeContent(QRect const& place) {
  if (place.width() == fittedWidth_) return;
  fittedWidth_ = place.width();
  fitted_.clear();
  for (auto const& line : lines_) fitted_.push_back(fitted(line, font(), fittedWidth_));
  update();
}

void TextWidget::paintContent(QPainter& painter, QRect const& place) {
  painter.setClipRect(place);
  painter.setFont(font());
  painter.setPen(toQt(content().paint, palette()));
  QFontMetricsF const metrics(font());
  double baseline = place.y() + (place.height() - natural_.height()) / 2 + metrics.ascent();
  for (auto const& line : fitted_) {
    double const spare = fittedWidth_ - metrics.horizontalAdvance(line);
    double const aside = content().alignment == view::HorizontalAlignment::leading  ? 0
                         : content().alignment == view::HorizontalAlignment::centre ? spare / 2
                                                                                    : spare;
    painter.drawText(QPointF(place.x() + aside, baseline), line);
    baseline += metrics.lineSpacing();
  }
}

}  // namespace morla::linux
