#include "captureone/window/MainWindow.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QScrollArea>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "captureone/window/CameraPanel.h"
#include "captureone/window/CameraState.h"
#include "captureone/window/DocumentArea.h"
#include "captureone/window/DocumentPanel.h"
#include "captureone/window/ElidedLabel.h"
#include "captureone/window/FaultPanel.h"
#include "captureone/window/QueuePanel.h"
#include "captureone/window/RecipePanel.h"
#include "captureone/window/Style.h"

namespace morla::captureone {

using namespace std::chrono_literals;

/// Drawing between two events of a script makes it wait several times as long as the second one takes.
static constexpr auto kEventsAreShownAfter = 100ms;

namespace {

struct Column {
  QScrollArea* scroll;
  QWidget* content;
  QVBoxLayout* rows;
};

Column makeColumn(QString const& name, int width, QWidget* parent) {
  auto* scroll = new QScrollArea(parent);
  scroll->setObjectName(name);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFixedWidth(width);
  auto* content = new QWidget(scroll);
  content->setObjectName(QStringLiteral("column"));
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(0, 4, 0, 4);
  rows->setSpacing(0);
  scroll->setWidget(content);
  return {scroll, content, rows};
}

/// A dot of that colour.
QPixmap lamp(QColor const& colour, double scale) {
  constexpr int kSize = 10;
  QPixmap pixmap((QSizeF(kSize, kSize) * scale).toSize());
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(QRectF(1, 1, kSize - 2, kSize - 2));
  return pixmap;
}

}  // namespace

MainWindow::MainWindow(Model& model, Controls& controls, std::shared_ptr<PictureSet const> pictures,
                       QString const& title)
    : model_(model), controls_(controls) {
  setWindowTitle(title);
  auto* window = new QWidget(this);
  window->setObjectName(QStringLiteral("window"));
  auto* rows = new QVBoxLayout(window);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeHeader(title));
  auto* columns = new QHBoxLayout;
  columns->setSpacing(0);
  columns->addWidget(makeCameraColumn());
  documents_ = new DocumentArea(model_, std::move(pictures), window);
  columns->addWidget(documents_, 1);
  columns->addWidget(makeDocumentColumn());
  rows->addLayout(columns, 1);
  rows->addWidget(makeFooter());
  setCentralWidget(window);
  setMinimumSize(940, 440);
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
  columns->addStretch(1);
  lamp_ = new QLabel(header);
  columns->addWidget(lamp_);
  cameraState_ = new ElidedLabel(Qt::ElideRight, header);
  columns->addWidget(cameraState_, 0);
  columns->addSpacing(8);
  readout_ = style::label({}, style::Tone::primary, header);
  readout_->setObjectName(QStringLiteral("readout"));
  columns->addWidget(readout_);
  return header;
}

QWidget* MainWindow::makeCameraColumn() {
  auto [scroll, column, rows] = makeColumn(QStringLiteral("cameraColumn"), style::kColumnWidth, this);
  camera_ = new CameraPanel(model_, column);
  faults_ = new FaultPanel(model_, controls_, column);
  rows->addWidget(camera_);
  rows->addWidget(style::separator(column));
  rows->addWidget(faults_);
  rows->addStretch();
  return scroll;
}

QWidget* MainWindow::makeDocumentColumn() {
  auto [scroll, column, rows] = makeColumn(QStringLiteral("documentColumn"), style::kNarrowColumnWidth, this);
  recipes_ = new RecipePanel(model_, column);
  queue_ = new QueuePanel(model_, column);
  document_ = new DocumentPanel(model_, column);
  rows->addWidget(recipes_);
  rows->addWidget(queue_, 1);
  rows->addWidget(document_);
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
  recipes_->refresh();
  queue_->refresh();
  document_->refresh();
  documents_->refresh();
  showCamera();
  showEvents();
}

void MainWindow::showCamera() {
  auto const state = describe(model_.cameras());
  if (std::exchange(lampColour_, state.colour) != state.colour) {
    lamp_->setPixmap(lamp(state.colour, devicePixelRatioF()));
  }
  cameraState_->setWhole(state.sentence);
  readout_->setText(state.readout);
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
  // Layouts follow their contents by posted events; drawing before them would draw the old places. A list follows by a
  // timer, unless somebody asks it for a place.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  for (auto* list : findChildren<QListView*>()) (void)list->indexAt({});
  // Only what has changed, which is asked of the window as a whole.
  QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange) model_.setFrontmost(isActiveWindow());
  QMainWindow::changeEvent(event);
}

}  // namespace morla::captureone
