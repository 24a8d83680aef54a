#pragma once

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>

namespace morla::captureone {

/// A part of the column: a heading over rows of "label: control". A collapsible one is closed at first.
class Section final : public QWidget {
 public:
  enum class Kind { fixed, collapsible };

  Section(QString const& title, Kind kind, QWidget* parent);

  void addRow(QString const& label, QWidget* control);
  /// The control takes the whole width.
  void addWide(QWidget* control);
  /// The control stands at the right end of the heading, which must be a fixed one.
  void addToHeading(QWidget* control);

 private:
  void setOpen(bool isOpen);

  QString title_;
  QHBoxLayout* heading_ = nullptr;
  QPushButton* disclosure_ = nullptr;
  QWidget* body_ = nullptr;
  QGridLayout* rows_ = nullptr;
};

}  // namespace morla::captureone
