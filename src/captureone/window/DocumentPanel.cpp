#include "captureone/window/DocumentPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>
#include <utility>

#include "captureone/window/Section.h"
#include "captureone/window/Style.h"

namespace morla::captureone {
namespace {

QSpinBox* numberBox(QString const& name, int maximum, QWidget* parent) {
  auto* box = style::named(new QSpinBox(parent), name);
  box->setRange(0, maximum);
  // Half-typed numbers would throw pictures away.
  box->setKeyboardTracking(false);
  style::leaveWheelToTheColumn(box);
  box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return box;
}

}  // namespace

template <typename Set>
void DocumentPanel::change(Set set) {
  auto const* current = model_.documents().current();
  if (current != nullptr) model_.documents().change(current->id, set);
}

DocumentPanel::DocumentPanel(Model& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  auto* section = new Section(QStringLiteral("Document"), Section::Kind::collapsible, this);
  rows->addWidget(style::separator(this));
  rows->addWidget(section);

  kind_ = style::combo(QStringLiteral("Nature du document"), section);
  kind_->addItems({QStringLiteral("Session"), QStringLiteral("Catalogue")});
  connect(kind_, &QComboBox::activated, this, [this](int index) {
    model_.documents().setKind(index == 0 ? DocumentKind::session : DocumentKind::catalog);
  });
  section->addRow(QStringLiteral("Nature"), kind_);

  variants_ = numberBox(QStringLiteral("Nombre d’images"), static_cast<int>(Gallery::kMaximum), section);
  connect(variants_, &QSpinBox::valueChanged, this, [this](int count) {
    change([count](Document& document) { return document.gallery.setCount(static_cast<std::size_t>(count)); });
  });
  section->addRow(QStringLiteral("Images"), variants_);

  counter_ = numberBox(QStringLiteral("Compteur de captures"), std::numeric_limits<int>::max(), section);
  connect(counter_, &QSpinBox::valueChanged, this, [this](int value) {
    change([value](Document& document) { return std::exchange(document.captureCounter, value) != value; });
  });
  section->addRow(QStringLiteral("Compteur"), counter_);

  form_ = style::combo(QStringLiteral("Forme du dossier de capture"), section);
  form_->addItem(QStringLiteral("Fichier"), static_cast<int>(CaptureForm::file));
  form_->addItem(QStringLiteral("POSIX"), static_cast<int>(CaptureForm::posix));
  form_->addItem(QStringLiteral("HFS"), static_cast<int>(CaptureForm::hfs));
  form_->addItem(QStringLiteral("Manquant"), static_cast<int>(CaptureForm::missing));
  connect(form_, &QComboBox::activated, this, [this] {
    auto const form = static_cast<CaptureForm>(form_->currentData().toInt());
    change([form](Document& document) { return std::exchange(document.captures.form, form) != form; });
  });
  section->addRow(QStringLiteral("Capture dans"), form_);

  captures_ = style::named(new QLineEdit(section), QStringLiteral("Dossier de capture"));
  connect(captures_, &QLineEdit::editingFinished, this, [this] {
    if (!captures_->isModified()) return;
    captures_->setModified(false);
    auto const text = captures_->text().toStdString();
    change([&text](Document& document) { return std::exchange(document.captures.text, text) != text; });
  });
  section->addWide(captures_);
}

void DocumentPanel::refresh() {
  auto const* document = model_.documents().current();
  setVisible(document != nullptr);
  if (document == nullptr) return;
  QSignalBlocker const quietVariants(variants_);
  QSignalBlocker const quietCounter(counter_);
  kind_->setCurrentIndex(document->kind == DocumentKind::session ? 0 : 1);
  variants_->setValue(static_cast<int>(document->gallery.size()));
  counter_->setValue(
      static_cast<int>(std::clamp<std::int64_t>(document->captureCounter, 0, std::numeric_limits<int>::max())));
  form_->setCurrentIndex(form_->findData(static_cast<int>(document->captures.form)));
  auto const folder = QString::fromStdString(document->captures.text);
  if (captures_->text() != folder) {
    captures_->setText(folder);
    captures_->setCursorPosition(0);
  }
}

}  // namespace morla::captureone
