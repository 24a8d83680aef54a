#pragma once

#include <QPushButton>
#include <QString>

#include "view/View.h"

namespace morla::linux {

/// A button with words on it, as every window of ours has them.
class ButtonControl : public QPushButton {
 public:
  explicit ButtonControl(QWidget* parent);

  void show(view::Button const& button);
  /// The width that shows the title in full, at the one height that all controls have.
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool isProminent() const { return style_ == view::ButtonStyle::prominent; }
  void paintProminentBody(QPainter& painter);

  view::ButtonStyle style_ = view::ButtonStyle::bordered;
  QString title_;
};

}  // namespace morla::linux
