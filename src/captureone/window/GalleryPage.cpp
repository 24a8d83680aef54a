#include "captureone/window/GalleryPage.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "captureone/window/ElidedLabel.h"
#include "captureone/window/Style.h"
#include "captureone/window/Texts.h"
#include "captureone/window/VariantGrid.h"

namespace morla::captureone {

GalleryPage::GalleryPage(Model& model, std::shared_ptr<PictureSet const> pictures, QWidget* parent)
    : QWidget(parent), model_(model) {
  setObjectName(QStringLiteral("viewer"));
  setAttribute(Qt::WA_StyledBackground);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(makeToolbar());
  pages_ = new QStackedWidget(this);
  auto* nothing = style::label(QStringLiteral("Aucune image dans cette collection"), style::Tone::secondary, pages_);
  nothing->setAlignment(Qt::AlignCenter);
  nothing->setWordWrap(true);
  pages_->addWidget(nothing);
  auto* frame = new QWidget(pages_);
  auto* margins = new QVBoxLayout(frame);
  margins->setContentsMargins(8, 0, 0, 0);
  grid_ = new VariantGrid(model_.documents(), std::move(pictures), frame);
  margins->addWidget(grid_);
  pages_->addWidget(frame);
  rows->addWidget(pages_, 1);
  rows->addWidget(makeStrip());
}

QWidget* GalleryPage::makeToolbar() {
  auto* bar = new QWidget(this);
  auto* columns = new QHBoxLayout(bar);
  columns->setContentsMargins(12, 8, 14, 8);
  columns->setSpacing(12);
  collection_ = style::combo(QStringLiteral("Collection"), bar);
  collection_->setMinimumWidth(96);
  collection_->setMaximumWidth(200);
  connect(collection_, &QComboBox::activated, this, [this] {
    auto const id = collection_->currentData().toString().toStdString();
    auto const* current = model_.documents().current();
    if (current == nullptr) return;
    model_.documents().change(current->id,
                              [&id](Document& document) { return document.gallery.setCurrentCollection(id); });
  });
  columns->addWidget(collection_, 1);
  columns->addStretch();
  count_ = style::label({}, style::Tone::secondary, bar);
  columns->addWidget(count_);
  return bar;
}

QWidget* GalleryPage::makeStrip() {
  auto* strip = new QWidget(this);
  strip->setObjectName(QStringLiteral("strip"));
  strip->setAttribute(Qt::WA_StyledBackground);
  strip->setFixedHeight(30);
  auto* columns = new QHBoxLayout(strip);
  columns->setContentsMargins(14, 0, 14, 0);
  columns->setSpacing(8);
  columns->addWidget(style::label(QStringLiteral("Capture"), style::Tone::secondary, strip));
  captures_ = new ElidedLabel(Qt::ElideMiddle, strip);
  captures_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  columns->addWidget(captures_, 1);
  counter_ = style::label({}, style::Tone::secondary, strip);
  columns->addWidget(counter_);
  return strip;
}

void GalleryPage::refreshCollections(Document const& document) {
  auto const& collections = document.gallery.collections();
  auto const count = static_cast<int>(collections.size());
  while (collection_->count() > count) collection_->removeItem(collection_->count() - 1);
  for (int i = 0; i < count; ++i) {
    auto const& each = collections[static_cast<std::size_t>(i)];
    auto const id = QString::fromStdString(each.id);
    auto const name = QString::fromStdString(each.name);
    if (i == collection_->count()) collection_->addItem(name, id);
    if (collection_->itemText(i) != name) collection_->setItemText(i, name);
    if (collection_->itemData(i).toString() != id) collection_->setItemData(i, id);
    if (&each == &document.gallery.currentCollection()) collection_->setCurrentIndex(i);
  }
}

void GalleryPage::refresh() {
  auto const& document = *model_.documents().current();
  refreshCollections(document);
  grid_->refresh();
  texts::SelectionCount count;
  auto const step = document.gallery.currentCollection().step;
  for (std::size_t place = 0; place < document.gallery.size(); ++place) {
    bool const isSelected = document.gallery.isSelected(place);
    if (place % step != 0) {
      count.elsewhere += isSelected ? 1 : 0;
      continue;
    }
    ++count.shown;
    count.selected += isSelected ? 1 : 0;
  }
  count_->setText(texts::selection(count));
  pages_->setCurrentIndex(count.shown == 0 ? 0 : 1);
  captures_->setWhole(texts::captureFolder(document));
  counter_->setText(QStringLiteral("n° %1").arg(document.captureCounter));
}

}  // namespace morla::captureone
