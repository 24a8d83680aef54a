#pragma once

#include <QAbstractButton>

class QPainter;

namespace morla::linux {

/// A disc of 12 points that turns red with a cross under the pointer.
class CloseButton : public QAbstractButton {
 public:
  explicit CloseButton(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// The title in the middle of a bar as wide as `area`, clear of the close button.
void paintTitle(QPainter& painter, QRectF const& area, QString const& title, QPalette const& palette);

}  // namespace morla::linux
