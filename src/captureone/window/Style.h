#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QString>

class QApplication;
class QComboBox;
class QWidget;

/// How the simulator looks: dark grey, as photo software is, so that only pictures have colours.
namespace morla::captureone::style {

/// Once, before the first window.
void apply(QApplication& application);

inline constexpr int kColumnWidth = 316;        ///< of the camera's values, in points
inline constexpr int kNarrowColumnWidth = 252;  ///< of the document's recipes and files

enum class Tone { primary, secondary, heading, title };
[[nodiscard]] QLabel* label(QString const& text, Tone tone, QWidget* parent);

/// A thin line that separates what is above from what is below.
[[nodiscard]] QWidget* separator(QWidget* parent);

/// Gives the control the name by which assistive programs know it.
template <typename Control>
Control* named(Control* control, QString const& name) {
  control->setAccessibleName(name);
  return control;
}

/// A combo box's own accessible name is the value that it shows; so it gets a description as well.
[[nodiscard]] QComboBox* combo(QString const& name, QWidget* parent);

/// Turning the wheel over the control scrolls what it stands in; somebody who scrolls must not change a value.
void leaveWheelToTheColumn(QWidget* control);

/// A check box that looks like a switch.
class Switch final : public QCheckBox {
 public:
  explicit Switch(QString const& name, QWidget* parent);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] bool hitButton(QPoint const& position) const override;
};

}  // namespace morla::captureone::style
