#include "captureone/window/VariantList.h"

#include "captureone/window/Texts.h"

namespace morla::captureone {

void VariantList::refresh() {
  auto const* document = documents_.current();
  std::string const id = document == nullptr ? std::string() : document->id;
  std::string const collection = document == nullptr ? std::string() : document->gallery.currentCollection().id;
  std::size_t const step = document == nullptr ? 1 : document->gallery.currentCollection().step;
  std::size_t const size = document == nullptr ? 0 : document->gallery.size();
  int const rows = static_cast<int>((size + step - 1) / step);
  if (id != document_ || collection != collection_) {
    beginResetModel();
    document_ = id;
    collection_ = collection;
    step_ = step;
    rows_ = rows;
    endResetModel();
  } else if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
}

int VariantList::rowOf(std::size_t place) const {
  auto const row = static_cast<int>(place / step_);
  return place % step_ == 0 && row < rows_ ? row : -1;
}

QVariant VariantList::data(QModelIndex const& index, int role) const {
  auto const* document = documents_.find(document_);
  if (document == nullptr || !index.isValid()) return {};
  auto const& gallery = document->gallery;
  auto const place = placeOf(index.row());
  if (place >= gallery.size()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return texts::variant(gallery, gallery.at(place));
    case Qt::ToolTipRole:
      return QString::fromStdString(gallery.at(place).image.path);
    case PictureRole:
      return QVariant::fromValue(static_cast<qulonglong>(gallery.at(place).image.picture));
    default:
      return {};
  }
}

}  // namespace morla::captureone
