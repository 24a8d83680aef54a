#include "captureone/window/DocumentArea.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>
#include <utility>

#include "captureone/window/GalleryPage.h"
#include "captureone/window/Style.h"

namespace morla::captureone {
DocumentArea::DocumentArea(Model& model, std::shared_ptr<PictureSet const> pictures, QWidget* parent)
    : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeTabRow());
  pages_ = new QStackedWidget(this);
  pages_->addWidget(makeEmptyPage());
  gallery_ = new GalleryPage(model_, std::move(pictures), pages_);
  pages_->addWidget(gallery_);
  rows->addWidget(pages_, 1);
}

QPushButton* DocumentArea::makeOpenButton(QString const& text, QString const& name, DocumentKind kind,
                                          QWidget* parent) {
  auto* button = style::named(new QPushButton(text, parent), name);
  button->setToolTip(name);
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
  openSession_ =
      makeOpenButton(QStringLiteral("+ Session"), QStringLiteral("Nouvelle session"), DocumentKind::session, row);
  openCatalog_ =
      makeOpenButton(QStringLiteral("+ Catalogue"), QStringLiteral("Nouveau catalogue"), DocumentKind::catalog, row);
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
    // Each text that is set lays all tabs out again.
    if (tabs_->tabText(i) != name) tabs_->setTabText(i, name);
    tabs_->setTabData(i, QString::fromStdString(document.id));
    auto const closing = QString(QStringLiteral("Fermer ") + name);
    auto* button = tabs_->tabButton(i, QTabBar::RightSide);
    if (button != nullptr && button->accessibleName() != closing) button->setAccessibleName(closing);
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
  if (current != nullptr) gallery_->refresh();
}

}  // namespace morla::captureone
