#include "captureone/window/VariantGrid.h"

#include <QItemSelection>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <utility>

namespace morla::captureone {
namespace {

constexpr int kNarrowestCell = 124;
constexpr int kMargin = 8;  ///< around a picture, for its frame
constexpr int kNameHeight = 22;

/// Sizes of thumbnails go up in such steps, in pixels of the screen, so that a window that is being resized does not
/// have all of them made again.
constexpr int kEdgeStep = 64;

}  // namespace

class VariantGrid::Delegate final : public QStyledItemDelegate {
 public:
  Delegate(VariantGrid& grid) : QStyledItemDelegate(&grid), grid_(grid) {}

  void setCell(QSize cell) { cell_ = cell; }
  [[nodiscard]] QSize sizeHint(QStyleOptionViewItem const&, QModelIndex const&) const override { return cell_; }

  void paint(QPainter* painter, QStyleOptionViewItem const& option, QModelIndex const& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    bool const isSelected = option.state.testFlag(QStyle::State_Selected);
    QRectF const cell = QRectF(option.rect.topLeft(), cell_).adjusted(3, 3, -3, -3);
    painter->setPen(Qt::NoPen);
    painter->setBrush(isSelected                                       ? QColor(0x3A, 0x3A, 0x3C)
                      : option.state.testFlag(QStyle::State_MouseOver) ? QColor(0x2C, 0x2C, 0x2C)
                                                                       : QColor(0x26, 0x26, 0x26));
    painter->drawRoundedRect(cell, 6, 6);
    QRectF const box = cell.adjusted(kMargin, kMargin, -kMargin, -kNameHeight - kMargin / 2.0);
    paintPicture(*painter, box, index);
    painter->setPen(isSelected ? QColor(0xFF, 0xFF, 0xFF) : QColor(0xB4, 0xB4, 0xB4));
    auto font = option.font;
    font.setPixelSize(11);
    painter->setFont(font);
    QRectF const line(cell.left() + 6, cell.bottom() - kNameHeight - 1, cell.width() - 12, kNameHeight);
    auto const name = index.data().toString();
    painter->drawText(line, Qt::AlignCenter,
                      QFontMetrics(font).elidedText(name, Qt::ElideMiddle, static_cast<int>(line.width())));
    if (isSelected) paintFrame(*painter, cell, QColor(0x3E, 0x8F, 0xE8), 2);
    // Only the keyboard needs to know where it is.
    if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
      paintFrame(*painter, cell.adjusted(3, 3, -3, -3), QColor(0xE4, 0xE4, 0xE4, 0x90), 1);
    }
    painter->restore();
  }

 private:
  static void paintFrame(QPainter& painter, QRectF const& rect, QColor const& colour, double breadth) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, breadth));
    painter.drawRoundedRect(rect.adjusted(breadth / 2, breadth / 2, -breadth / 2, -breadth / 2), 6, 6);
  }

  void paintPicture(QPainter& painter, QRectF const& box, QModelIndex const& index) const {
    double const scale = painter.device()->devicePixelRatio();
    int const edge = static_cast<int>(std::ceil(std::max(box.width(), box.height()) * scale / kEdgeStep)) * kEdgeStep;
    auto const picture = static_cast<std::size_t>(index.data(VariantList::PictureRole).toULongLong());
    auto const thumbnail = grid_.thumbnails_->find(picture, edge);
    if (!thumbnail || thumbnail->isNull()) {
      paintPlaceholder(painter, box, thumbnail.has_value());
      return;
    }
    auto const size = QSizeF(thumbnail->size()).scaled(box.size(), Qt::KeepAspectRatio);
    QRectF place(QPointF(), size);
    place.moveCenter(box.center());
    // On whole pixels, so that the edges are sharp.
    auto const whole = [scale](double value) { return std::round(value * scale) / scale; };
    place =
        QRectF(QPointF(whole(place.left()), whole(place.top())), QPointF(whole(place.right()), whole(place.bottom())));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, *thumbnail, QRectF(thumbnail->rect()));
  }

  static void paintPlaceholder(QPainter& painter, QRectF const& box, bool isUnreadable) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x30, 0x30, 0x30));
    painter.drawRect(box);
    if (!isUnreadable) return;
    painter.setPen(QColor(0x9A, 0x9A, 0x9A));
    painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, QStringLiteral("Illisible"));
  }

  VariantGrid& grid_;
  QSize cell_{kNarrowestCell, kNarrowestCell};
};

VariantGrid::VariantGrid(Documents& documents, std::shared_ptr<PictureSet const> pictures, QWidget* parent)
    : QListView(parent), documents_(documents) {
  setObjectName(QStringLiteral("grid"));
  setAccessibleName(QStringLiteral("Images"));
  thumbnails_ = std::make_unique<Thumbnails>(std::move(pictures), [this](std::size_t made) { updatePicture(made); });
  list_ = new VariantList(documents_, this);
  delegate_ = new Delegate(*this);
  // Not the icon mode: it keeps a place for each picture, which costs with thousands of them.
  setFlow(QListView::LeftToRight);
  setWrapping(true);
  setResizeMode(QListView::Adjust);
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setSelectionRectVisible(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
          [this](int least, int most) { verticalScrollBar()->setEnabled(most > least); });
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setMouseTracking(true);
  setItemDelegate(delegate_);
  setModel(list_);
}

void VariantGrid::fitCells() {
  // One pixel less: a row that fits exactly would be broken.
  int const room = viewport()->width() - 1;
  int const columns = std::max(1, room / kNarrowestCell);
  int const width = std::max(kNarrowestCell / 2, room / columns);
  int const height = (width - 2 * kMargin) * 3 / 4 + 2 * kMargin + kNameHeight;
  delegate_->setCell({width, height});
  verticalScrollBar()->setSingleStep(height / 3);
}

void VariantGrid::resizeEvent(QResizeEvent* event) {
  fitCells();
  QListView::resizeEvent(event);
}

void VariantGrid::updatePicture(std::size_t picture) {
  auto const visible = viewport()->rect();
  auto const first = indexAt(QPoint(4, 4));
  if (!first.isValid()) return;
  for (int row = first.row(); row < list_->rowCount(); ++row) {
    auto const index = list_->index(row);
    auto const rect = visualRect(index);
    if (rect.top() > visible.bottom()) return;
    if (index.data(VariantList::PictureRole).toULongLong() == picture) viewport()->update(rect);
  }
}

void VariantGrid::refresh() {
  QScopedValueRollback<bool> const following(isFollowing_, true);
  list_->refresh();
  auto const* document = documents_.find(list_->document());
  std::vector<bool> wanted(static_cast<std::size_t>(list_->rowCount()), false);
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    wanted[row] = document->gallery.isSelected(list_->placeOf(static_cast<int>(row)));
  }
  if (wanted != selectedRows()) selectRows(wanted);
}

std::vector<bool> VariantGrid::selectedRows() const {
  std::vector<bool> rows(static_cast<std::size_t>(list_->rowCount()), false);
  for (auto const& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows[static_cast<std::size_t>(row)] = true;
  }
  return rows;
}

void VariantGrid::selectRows(std::vector<bool> const& wanted) {
  QItemSelection selection;
  for (std::size_t row = 0; row < wanted.size();) {
    std::size_t end = row;
    while (end < wanted.size() && wanted[end]) ++end;
    if (end > row) {
      selection.append(
          QItemSelectionRange(list_->index(static_cast<int>(row)), list_->index(static_cast<int>(end) - 1)));
    }
    row = end + 1;
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  // Keys and Shift clicks go on from what is selected.
  if (!selection.isEmpty() && !selectionModel()->isSelected(currentIndex())) {
    selectionModel()->setCurrentIndex(selection.first().topLeft(), QItemSelectionModel::NoUpdate);
  }
}

void VariantGrid::selectionChanged(QItemSelection const& selected, QItemSelection const& deselected) {
  QListView::selectionChanged(selected, deselected);
  if (isFollowing_) return;
  auto const rows = selectedRows();
  std::vector<std::size_t> places;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (rows[row]) places.push_back(list_->placeOf(static_cast<int>(row)));
  }
  documents_.change(list_->document(), [&](Document& document) { return document.gallery.select(places); });
}

}  // namespace morla::captureone
