#include "captureone/window/CameraPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <utility>

namespace morla::captureone {
namespace {

QString labelOf(CameraSetting which) {
  switch (which) {
    case CameraSetting::format:
      return QStringLiteral("Format");
    case CameraSetting::iso:
      return QStringLiteral("ISO");
    case CameraSetting::aperture:
      return QStringLiteral("Ouverture");
    case CameraSetting::shutterSpeed:
      return QStringLiteral("Vitesse");
  }
  return {};
}

void fill(QLineEdit* edit, QString const& text) {
  // Writing it again would move the cursor of somebody who is typing.
  if (edit->text() == text) return;
  edit->setText(text);
  edit->setCursorPosition(0);
}

}  // namespace

CameraPanel::CameraPanel(Model& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeBodySection());
  rows->addWidget(style::separator(this));
  rows->addWidget(makeValueSection());
  rows->addWidget(style::separator(this));
  rows->addWidget(makeOfferSection());
}

Section* CameraPanel::makeBodySection() {
  auto* section = new Section(QStringLiteral("Boîtier"), Section::Kind::fixed, this);
  picker_ = style::combo(QStringLiteral("Boîtier sélectionné"), section);
  connect(picker_, &QComboBox::activated, this, [this](int index) {
    if (index >= 0) model_.cameras().makeCurrent(static_cast<std::size_t>(index));
  });
  section->addWide(picker_);
  connected_ = new style::Switch(QStringLiteral("Connecté"), section);
  connect(connected_, &QCheckBox::toggled, this,
          [this](bool is) { model_.cameras().setLink(is ? CameraLink::connected : CameraLink::disconnected); });
  section->addRow(QStringLiteral("Connecté"), connected_);
  power_ = new style::Switch(QStringLiteral("Allumé"), section);
  connect(power_, &QCheckBox::toggled, this,
          [this](bool is) { model_.cameras().setPower(is ? CameraPower::on : CameraPower::off); });
  section->addRow(QStringLiteral("Allumé"), power_);
  return section;
}

Section* CameraPanel::makeValueSection() {
  auto* section = new Section(QStringLiteral("Réglages"), Section::Kind::fixed, this);
  for (auto const which : kCameraSettings) {
    auto*& value = settings_[static_cast<std::size_t>(which)].value;
    value = style::combo(labelOf(which), section);
    value->setEditable(true);
    value->setInsertPolicy(QComboBox::NoInsert);
    value->setCompleter(nullptr);
    value->lineEdit()->setAccessibleName(labelOf(which));
    auto const store = [this, which, value] { model_.cameras().setValue(which, value->currentText().toStdString()); };
    connect(value, &QComboBox::activated, this, store);
    connect(value->lineEdit(), &QLineEdit::editingFinished, this, [value, store] {
      if (value->lineEdit()->isModified()) store();
    });
    section->addRow(labelOf(which), value);
  }
  return section;
}

Section* CameraPanel::makeOfferSection() {
  auto* section = new Section(QStringLiteral("Modèle du boîtier"), Section::Kind::collapsible, this);
  count_ = style::named(new QSpinBox(section), QStringLiteral("Boîtiers branchés"));
  count_->setRange(0, static_cast<int>(Cameras::maximum()));
  style::leaveWheelToTheColumn(count_);
  connect(count_, &QSpinBox::valueChanged, this,
          [this](int count) { model_.cameras().setCount(static_cast<std::size_t>(count)); });
  section->addRow(QStringLiteral("Branchés"), count_);
  name_ = style::named(new QLineEdit(section), QStringLiteral("Nom du boîtier"));
  connect(name_, &QLineEdit::editingFinished, this, [this] {
    if (name_->isModified()) model_.cameras().setName(name_->text().toStdString());
  });
  section->addRow(QStringLiteral("Nom"), name_);
  section->addWide(style::label(QStringLiteral("Valeurs proposées, séparées par |"), style::Tone::secondary, section));
  for (auto const which : kCameraSettings) {
    auto*& available = settings_[static_cast<std::size_t>(which)].available;
    available = style::named(new QLineEdit(section), labelOf(which) + QStringLiteral(", valeurs proposées"));
    connect(available, &QLineEdit::editingFinished, this, [this, which, available] {
      if (available->isModified()) model_.cameras().setAvailable(which, available->text().toStdString());
    });
    section->addRow(labelOf(which), available);
  }
  return section;
}

void CameraPanel::refreshPicker() {
  QSignalBlocker const quiet(picker_);
  picker_->clear();
  for (auto const& each : model_.cameras().all()) picker_->addItem(QString::fromStdString(each.name));
  picker_->setPlaceholderText(QStringLiteral("Aucun boîtier"));
  picker_->setCurrentIndex(model_.cameras().current() ? static_cast<int>(model_.cameras().currentIndex()) : -1);
  picker_->setEnabled(picker_->count() > 0);
}

void CameraPanel::refreshSetting(CameraSetting which) {
  auto const& row = settings_[static_cast<std::size_t>(which)];
  auto const* camera = model_.cameras().current();
  QSignalBlocker const quiet(row.value);
  row.value->clear();
  if (camera != nullptr) {
    for (auto const& each : camera->offered(which)) row.value->addItem(QString::fromStdString(each));
  }
  auto const& state = camera == nullptr ? SettingState{} : camera->setting(which);
  auto const value = QString::fromStdString(state.value);
  row.value->setCurrentIndex(row.value->findText(value));
  row.value->setEditText(value);
  row.value->setEnabled(camera != nullptr);
  fill(row.available, QString::fromStdString(state.available));
  row.available->setEnabled(camera != nullptr);
}

void CameraPanel::refresh() {
  // Most changes are of something else, and filling lists anew costs more than all the rest.
  Shown now{model_.cameras().all(), model_.cameras().currentIndex()};
  if (shown_ == now) return;
  auto const before = std::exchange(shown_, std::move(now));
  auto const* camera = model_.cameras().current();
  refreshPicker();
  QSignalBlocker const quietConnected(connected_);
  QSignalBlocker const quietPower(power_);
  QSignalBlocker const quietCount(count_);
  connected_->setChecked(camera != nullptr && camera->link == CameraLink::connected);
  power_->setChecked(camera != nullptr && camera->power == CameraPower::on);
  count_->setValue(static_cast<int>(model_.cameras().all().size()));
  fill(name_, camera == nullptr ? QString() : QString::fromStdString(camera->name));
  for (QWidget* each :
       {static_cast<QWidget*>(connected_), static_cast<QWidget*>(power_), static_cast<QWidget*>(name_)}) {
    each->setEnabled(camera != nullptr);
  }
  auto const* old = before ? before->camera() : nullptr;
  for (auto const which : kCameraSettings) {
    bool const isSame = old != nullptr && camera != nullptr && old->setting(which) == camera->setting(which);
    if (!isSame) refreshSetting(which);
  }
}

}  // namespace morla::captureone
