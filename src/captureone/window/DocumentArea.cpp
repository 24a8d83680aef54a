#include "captureone/window/DocumentArea.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>
#include <numbers>

#include "captureone/window/CameraState.h"
#include "captureone/window/Style.h"

namespace morla::captureone {
namespace {

/// A drawn iris: stands where a picture would.
class Iris final : public QWidget {
 public:
  explicit Iris(QWidget* parent) : QWidget(parent) {
    setFixedSize(128, 128);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  void setColour(QColor colour) {
    colour_ = colour;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr int kBlades = 7;
    constexpr double kOuter = 60;
    constexpr double kInner = 26;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    painter.setPen(QPen(QColor(0x50, 0x50, 0x50), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawEllipse(QPointF(), kOuter, kOuter);
    auto const at = [](double radius, double turns) {
      double const angle = turns * 2 * std::numbers::pi;
      return QPointF(radius * std::cos(angle), radius * std::sin(angle));
    };
    QPolygonF opening;
    for (int i = 0; i < kBlades; ++i) {
      double const turn = double(i) / kBlades;
      opening << at(kInner, turn);
      // Each blade's edge runs on, past the opening's corner, to the ring.
      painter.drawLine(at(kInner, turn), at(kOuter, turn + 0.19));
    }
    painter.setBrush(QColor(0x16, 0x16, 0x16));
    painter.drawPolygon(opening);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour_);
    painter.drawEllipse(QPointF(), 5, 5);
  }

 private:
  QColor colour_;
};

constexpr char kIrisName[] = "iris";

}  // namespace

DocumentArea::DocumentArea(Model& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeTabRow());
  pages_ = new QStackedWidget(this);
  pages_->addWidget(makeEmptyPage());
  pages_->addWidget(makeDocumentPage());
  rows->addWidget(pages_, 1);
}

QPushButton* DocumentArea::makeOpenButton(QString const& text, DocumentKind kind, QWidget* parent) {
  auto* button = style::named(new QPushButton(text, parent), text);
  connect(button, &QPushButton::clicked, this, [this, kind] { model_.documents().open(kind); });
  return button;
}

QWidget* DocumentArea::makeTabRow() {
  auto* row = new QWidget(this);
  auto* columns = new QHBoxLayout(row);
  columns->setContentsMargins(0, 6, 12, 0);
  columns->setSpacing(8);
  tabs_ = style::named(new QTabBar(row), QStringLiteral("Documents ouverts"));
  tabs_->setTabsClosable(true);
  tabs_->setExpanding(false);
  tabs_->setDrawBase(false);
  tabs_->setUsesScrollButtons(true);
  tabs_->setElideMode(Qt::ElideNone);
  connect(tabs_, &QTabBar::tabCloseRequested, this, [this](int index) { closeTab(index); });
  connect(tabs_, &QTabBar::currentChanged, this, [this](int index) {
    if (index >= 0) model_.documents().makeCurrent(tabs_->tabData(index).toString().toStdString());
  });
  columns->addWidget(tabs_, 1, Qt::AlignBottom);
  openSession_ = makeOpenButton(QStringLiteral("Nouvelle session"), DocumentKind::session, row);
  openCatalog_ = makeOpenButton(QStringLiteral("Nouveau catalogue"), DocumentKind::catalog, row);
  for (auto* button : {openSession_, openCatalog_}) columns->addWidget(button, 0, Qt::AlignTop);
  row->setFixedHeight(40);
  return row;
}

QWidget* DocumentArea::makeEmptyPage() {
  auto* page = new QWidget(pages_);
  page->setObjectName(QStringLiteral("empty"));
  page->setAttribute(Qt::WA_StyledBackground);
  auto* rows = new QVBoxLayout(page);
  rows->setSpacing(12);
  rows->addStretch();
  rows->addWidget(style::label(QStringLiteral("Aucun document ouvert"), style::Tone::title, page), 0, Qt::AlignHCenter);
  rows->addWidget(style::label(QStringLiteral("Ouvrez une session ou un catalogue."), style::Tone::secondary, page), 0,
                  Qt::AlignHCenter);
  rows->addStretch();
  return page;
}

QWidget* DocumentArea::makeDocumentPage() {
  auto* page = new QWidget(pages_);
  page->setObjectName(QStringLiteral("viewer"));
  page->setAttribute(Qt::WA_StyledBackground);
  auto* rows = new QVBoxLayout(page);
  rows->setContentsMargins(24, 20, 24, 24);
  rows->setSpacing(12);

  auto* heading = new QHBoxLayout;
  heading->setSpacing(12);
  name_ = style::label({}, style::Tone::primary, page);
  name_->setObjectName(QStringLiteral("documentName"));
  heading->addWidget(name_, 1);
  auto* kindLabel = style::label(QStringLiteral("Nature"), style::Tone::secondary, page);
  heading->addWidget(kindLabel);
  kind_ = style::combo(QStringLiteral("Nature du document"), page);
  kind_->addItems({QStringLiteral("Session"), QStringLiteral("Catalogue")});
  kind_->setMinimumWidth(124);
  kindLabel->setBuddy(kind_);
  connect(kind_, &QComboBox::activated, this, [this](int index) {
    model_.documents().setKind(index == 0 ? DocumentKind::session : DocumentKind::catalog);
  });
  heading->addWidget(kind_);
  rows->addLayout(heading);

  rows->addStretch();
  auto* iris = new Iris(page);
  iris->setObjectName(QString::fromLatin1(kIrisName));
  rows->addWidget(iris, 0, Qt::AlignHCenter);
  readout_ = style::label({}, style::Tone::primary, page);
  readout_->setObjectName(QStringLiteral("readout"));
  state_ = style::label({}, style::Tone::secondary, page);
  for (auto* each : {readout_, state_}) {
    each->setAlignment(Qt::AlignHCenter);
    each->setWordWrap(true);
    rows->addWidget(each);
  }
  rows->addStretch();
  return page;
}

void DocumentArea::closeTab(int index) {
  model_.documents().close(tabs_->tabData(index).toString().toStdString());
}

void DocumentArea::refreshTabs() {
  QSignalBlocker const quiet(tabs_);
  auto const& documents = model_.documents().all();
  while (tabs_->count() > static_cast<int>(documents.size())) tabs_->removeTab(tabs_->count() - 1);
  for (int i = 0; i < static_cast<int>(documents.size()); ++i) {
    auto const& document = documents[static_cast<std::size_t>(i)];
    auto const name = QString::fromStdString(document.name);
    if (i == tabs_->count()) tabs_->addTab(name);
    tabs_->setTabText(i, name);
    tabs_->setTabData(i, QString::fromStdString(document.id));
    if (auto* button = tabs_->tabButton(i, QTabBar::RightSide)) {
      button->setAccessibleName(QStringLiteral("Fermer ") + name);
    }
    if (&document == model_.documents().current()) tabs_->setCurrentIndex(i);
  }
}

void DocumentArea::refresh() {
  refreshTabs();
  bool const isFull = model_.documents().all().size() >= Documents::kMaximum;
  openSession_->setEnabled(!isFull);
  openCatalog_->setEnabled(!isFull);
  auto const* current = model_.documents().current();
  pages_->setCurrentIndex(current == nullptr ? 0 : 1);
  if (current == nullptr) return;
  name_->setText(QString::fromStdString(current->name));
  kind_->setCurrentIndex(current->kind == DocumentKind::session ? 0 : 1);
  auto const camera = describe(model_.cameras());
  readout_->setText(camera.readout);
  state_->setText(camera.sentence);
  static_cast<Iris*>(findChild<QWidget*>(QString::fromLatin1(kIrisName)))->setColour(camera.colour);
}

}  // namespace morla::captureone
