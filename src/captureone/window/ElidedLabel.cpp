#include "captureone/window/ElidedLabel.h"

namespace morla::captureone {

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), mode_(mode) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void ElidedLabel::setWhole(QString const& text) {
  if (whole_ == text) return;
  whole_ = text;
  setToolTip(text);
  setAccessibleName(text);
  updateGeometry();
  fit();
}

QSize ElidedLabel::sizeHint() const {
  return {fontMetrics().horizontalAdvance(whole_) + 2, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().horizontalAdvance(QStringLiteral("…")) * 3, fontMetrics().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  fit();
}

void ElidedLabel::fit() {
  // One line: a name may hold anything.
  auto line = whole_;
  line.replace(u'\n', u' ');
  setText(fontMetrics().elidedText(line, mode_, width()));
}

}  // namespace morla::captureone
