#pragma once

#include <QLabel>
#include <QString>

namespace morla::captureone {

/// One line of text that is cut with an ellipsis where there is no room for it; all of it is in its tool tip and its
/// accessible name.
class ElidedLabel final : public QLabel {
 public:
  ElidedLabel(Qt::TextElideMode mode, QWidget* parent);
  void setWhole(QString const& text);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();

  Qt::TextElideMode mode_;
  QString whole_;
};

}  // namespace morla::captureone
