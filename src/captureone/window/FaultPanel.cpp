#include "captureone/window/FaultPanel.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "captureone/window/Section.h"

namespace morla::captureone {
namespace {

QSpinBox* eventBox(QString const& name, QWidget* parent) {
  auto* box = style::named(new QSpinBox(parent), name);
  box->setRange(0, std::numeric_limits<int>::max());
  box->setSpecialValueText(QStringLiteral("Jamais"));
  // Each new number starts a count; half-typed ones must not.
  box->setKeyboardTracking(false);
  style::leaveWheelToTheColumn(box);
  return box;
}

int shown(std::int64_t event) {
  return static_cast<int>(std::min<std::int64_t>(event, std::numeric_limits<int>::max()));
}

}  // namespace

FaultPanel::FaultPanel(Model& model, Controls& controls, QWidget* parent)
    : QWidget(parent), model_(model), controls_(controls) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  auto* section = new Section(QStringLiteral("Pannes et autorisation"), Section::Kind::collapsible, this);
  rows->addWidget(section);

  automation_ = style::combo(QStringLiteral("Automatisation par MORLA"), section);
  automation_->addItem(QStringLiteral("Autorisée"), QStringLiteral("allow"));
  automation_->addItem(QStringLiteral("Refusée"), QStringLiteral("deny"));
  automation_->addItem(QStringLiteral("À demander"), QStringLiteral("undecided"));
  connect(automation_, &QComboBox::activated, this, [this] {
    // A store that cannot be written stays what it is, and is shown again.
    if (controls_.set("automation", automation_->currentData().toString().toStdString())) refreshAutomation();
  });
  section->addRow(QStringLiteral("Automatisation"), automation_);

  delay_ = style::named(new QDoubleSpinBox(section), QStringLiteral("Attente par événement"));
  delay_->setRange(0, Faults::kLongestDelay.count());
  delay_->setDecimals(3);
  delay_->setSingleStep(0.1);
  delay_->setSuffix(QStringLiteral(" s"));
  delay_->setKeyboardTracking(false);
  style::leaveWheelToTheColumn(delay_);
  connect(delay_, &QDoubleSpinBox::valueChanged, this,
          [this](double seconds) { model_.faults().setDelay(std::chrono::duration<double>(seconds)); });
  section->addRow(QStringLiteral("Attente"), delay_);

  silent_ = new style::Switch(QStringLiteral("Ne répond plus"), section);
  connect(silent_, &QCheckBox::toggled, this,
          [this](bool is) { model_.faults().setSilence(is ? Silence::on : Silence::off); });
  section->addRow(QStringLiteral("Ne répond plus"), silent_);

  quitAt_ = eventBox(QStringLiteral("Quitte à l’événement"), section);
  connect(quitAt_, &QSpinBox::valueChanged, this, [this](int event) { model_.faults().setQuitAtEvent(event); });
  section->addRow(QStringLiteral("Quitte au n°"), quitAt_);
  refuseAt_ = eventBox(QStringLiteral("Refuse l’événement"), section);
  connect(refuseAt_, &QSpinBox::valueChanged, this, [this](int event) { model_.faults().setRefuseAtEvent(event); });
  section->addRow(QStringLiteral("Refuse le n°"), refuseAt_);

  standIn_ = style::combo(QStringLiteral("Nature de la réponse"), section);
  standIn_->addItem(QStringLiteral("Texte"), QStringLiteral("text"));
  standIn_->addItem(QStringLiteral("Nombre entier"), QStringLiteral("integer"));
  standIn_->addItem(QStringLiteral("« missing value »"), QStringLiteral("missing"));
  standIn_->addItem(QStringLiteral("Aucune valeur"), QStringLiteral("nothing"));
  connect(standIn_, &QComboBox::activated, this,
          [this] { (void)controls_.set("fault.reply-kind", standIn_->currentData().toString().toStdString()); });
  section->addRow(QStringLiteral("Répond par"), standIn_);

  reply_ = style::named(new QLineEdit(section), QStringLiteral("Réponse imposée"));
  reply_->setPlaceholderText(QStringLiteral("La vraie"));
  connect(reply_, &QLineEdit::editingFinished, this, [this] {
    // A reply that is not UTF-8 cannot be shown as it is; only what was typed may replace it.
    if (reply_->isModified()) model_.faults().setReply(reply_->text().toStdString());
  });
  section->addRow(QStringLiteral("Réponse"), reply_);
}

void FaultPanel::refreshAutomation() {
  automation_->setCurrentIndex(automation_->findData(QString::fromStdString(controls_.get("automation").value_or(""))));
}

void FaultPanel::refresh() {
  QSignalBlocker const quietDelay(delay_);
  QSignalBlocker const quietSilent(silent_);
  QSignalBlocker const quietQuit(quitAt_);
  QSignalBlocker const quietRefuse(refuseAt_);
  auto const& faults = model_.faults();
  delay_->setValue(faults.delay().count());
  silent_->setChecked(faults.silence() == Silence::on);
  quitAt_->setValue(shown(faults.quitAtEvent()));
  refuseAt_->setValue(shown(faults.refuseAtEvent()));
  standIn_->setCurrentIndex(standIn_->findData(QString::fromStdString(controls_.get("fault.reply-kind").value_or(""))));
  // The other kinds have no text.
  reply_->setEnabled(faults.standIn() == StandIn::text);
  auto const reply = QString::fromStdString(faults.reply());
  if (reply_->text() != reply) reply_->setText(reply);
}

}  // namespace morla::captureone
