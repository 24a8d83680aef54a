#include "captureone/window/Section.h"

#include <QLabel>
#include <QVBoxLayout>

#include "captureone/window/Style.h"

namespace morla::captureone {

Section::Section(QString const& title, Kind kind, QWidget* parent) : QWidget(parent), title_(title) {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(16, 12, 16, 12);
  outer->setSpacing(8);
  body_ = new QWidget(this);
  rows_ = new QGridLayout(body_);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setHorizontalSpacing(12);
  rows_->setVerticalSpacing(8);
  rows_->setColumnStretch(1, 1);
  rows_->setColumnMinimumWidth(0, 104);
  if (kind == Kind::fixed) {
    heading_ = new QHBoxLayout;
    heading_->setSpacing(6);
    heading_->addWidget(style::label(title.toUpper(), style::Tone::heading, this), 1);
    outer->addLayout(heading_);
  } else {
    disclosure_ = style::named(new QPushButton(this), title);
    disclosure_->setObjectName(QStringLiteral("disclosure"));
    disclosure_->setCheckable(true);
    disclosure_->setFocusPolicy(Qt::TabFocus);
    disclosure_->setCursor(Qt::PointingHandCursor);
    connect(disclosure_, &QPushButton::toggled, this, [this](bool isOpen) { setOpen(isOpen); });
    outer->addWidget(disclosure_);
    setOpen(false);
  }
  outer->addWidget(body_);
}

void Section::setOpen(bool isOpen) {
  disclosure_->setText((isOpen ? QStringLiteral("▾  ") : QStringLiteral("▸  ")) + title_.toUpper());
  body_->setVisible(isOpen);
}

void Section::addRow(QString const& label, QWidget* control) {
  int const row = rows_->rowCount();
  auto* text = style::label(label, style::Tone::secondary, body_);
  text->setBuddy(control);
  rows_->addWidget(text, row, 0);
  // A switch keeps its size and stands at the right edge, where the other controls end.
  bool const isSwitch = dynamic_cast<style::Switch*>(control) != nullptr;
  rows_->addWidget(control, row, 1, isSwitch ? Qt::AlignRight | Qt::AlignVCenter : Qt::Alignment());
}

void Section::addToHeading(QWidget* control) {
  heading_->addWidget(control);
}

void Section::addWide(QWidget* control) {
  rows_->addWidget(control, rows_->rowCount(), 0, 1, 2);
}

}  // namespace morla::captureone
