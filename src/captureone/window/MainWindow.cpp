#include "captureone/window/MainWindow.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <chrono>

#include "captureone/window/CameraPanel.h"
#include "captureone/window/DocumentArea.h"
#include "captureone/window/FaultPanel.h"
#include "captureone/window/Style.h"

namespace morla::captureone {

using namespace std::chrono_literals;

/// Drawing between two events of a script makes it wait several times as long as the second one takes.
static constexpr auto kEventsAreShownAfter = 100ms;

MainWindow::MainWindow(Model& model, Controls& controls, QString const& title) : model_(model), controls_(controls) {
  setWindowTitle(title);
  auto* window = new QWidget(this);
  window->setObjectName(QStringLiteral("window"));
  auto* rows = new QVBoxLayout(window);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeHeader(title));
  auto* columns = new QHBoxLayout;
  columns->setSpacing(0);
  columns->addWidget(makeColumn());
  documents_ = new DocumentArea(model_, window);
  columns->addWidget(documents_, 1);
  rows->addLayout(columns, 1);
  rows->addWidget(makeFooter());
  setCentralWidget(window);
  setMinimumSize(820, 440);
  resize(980, 620);

  eventsDue_.setSingleShot(true);
  eventsDue_.setInterval(kEventsAreShownAfter);
  connect(&eventsDue_, &QTimer::timeout, this, &MainWindow::showEvents);
  modelChanges_ = model_.onChange([this] { refresh(); });
  modelEvents_ = model_.onEvent([this] {
    if (!eventsDue_.isActive()) eventsDue_.start();
  });
  // The one thing shown here that is not in the model.
  keyChanges_ = controls_.onChange([this](Controls::Snapshot const& changed) {
    if (changed.contains("automation")) faults_->refreshAutomation();
  });
  faults_->refreshAutomation();
  refresh();
}

QWidget* MainWindow::makeHeader(QString const& title) {
  auto* header = new QWidget(this);
  header->setObjectName(QStringLiteral("header"));
  header->setAttribute(Qt::WA_StyledBackground);
  header->setFixedHeight(44);
  auto* columns = new QHBoxLayout(header);
  columns->setContentsMargins(16, 0, 16, 0);
  columns->setSpacing(10);
  columns->addWidget(style::label(title, style::Tone::title, header));
  auto* badge = style::label(QStringLiteral("Simulateur"), style::Tone::secondary, header);
  badge->setObjectName(QStringLiteral("badge"));
  columns->addWidget(badge, 0, Qt::AlignVCenter);
  columns->addStretch();
  return header;
}

QWidget* MainWindow::makeColumn() {
  auto* scroll = new QScrollArea(this);
  scroll->setObjectName(QStringLiteral("columnScroll"));
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFixedWidth(style::kColumnWidth);
  auto* column = new QWidget(scroll);
  column->setObjectName(QStringLiteral("column"));
  auto* rows = new QVBoxLayout(column);
  rows->setContentsMargins(0, 4, 0, 4);
  rows->setSpacing(0);
  camera_ = new CameraPanel(model_, column);
  faults_ = new FaultPanel(model_, controls_, column);
  rows->addWidget(camera_);
  rows->addWidget(style::separator(column));
  rows->addWidget(faults_);
  rows->addStretch();
  scroll->setWidget(column);
  return scroll;
}

QWidget* MainWindow::makeFooter() {
  auto* footer = new QWidget(this);
  footer->setObjectName(QStringLiteral("footer"));
  footer->setAttribute(Qt::WA_StyledBackground);
  footer->setFixedHeight(28);
  auto* columns = new QHBoxLayout(footer);
  columns->setContentsMargins(16, 0, 16, 0);
  events_ = style::label({}, style::Tone::secondary, footer);
  columns->addWidget(events_);
  columns->addStretch();
  return footer;
}

void MainWindow::refresh() {
  camera_->refresh();
  faults_->refresh();
  documents_->refresh();
  showEvents();
}

void MainWindow::showEvents() {
  auto const events = model_.faults().events();
  events_->setText(events == 0   ? QStringLiteral("Aucun événement reçu")
                   : events == 1 ? QStringLiteral("1 événement reçu")
                                 : QString::number(events) + QStringLiteral(" événements reçus"));
}

void MainWindow::settle() {
  if (eventsDue_.isActive()) {
    eventsDue_.stop();
    showEvents();
  }
  // Layouts follow their contents by posted events; drawing before them would draw the old places.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  if (isVisible()) repaint();
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange) model_.setFrontmost(isActiveWindow());
  QMainWindow::changeEvent(event);
}

}  // namespace morla::captureone
