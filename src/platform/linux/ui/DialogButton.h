#pragma once

#include <QAbstractButton>

namespace morla::linux {

/// A button with a word on it; the prominent one is filled with the accent colour. Return presses it as well as the
/// space bar while it has the keyboard.
class DialogButton final : public QAbstractButton {
 public:
  enum class Kind { bordered, prominent };

  DialogButton(QString const& text, Kind kind, QWidget* parent);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  Kind kind_;
  /// Only a focus that came by the keyboard is shown.
  bool showsFocus_ = false;
};

}  // namespace morla::linux
