#pragma once

#include <QAbstractListModel>
#include <string>

#include "captureone/model/Documents.h"

namespace morla::captureone {

/// The variants of the current collection of one document, one a row.
class VariantList final : public QAbstractListModel {
 public:
  enum Role { PictureRole = Qt::UserRole };  ///< which picture of the set: a `qulonglong`

  VariantList(Documents const& documents, QObject* parent) : QAbstractListModel(parent), documents_(documents) {}

  /// Takes over what the current document has now.
  void refresh();

  [[nodiscard]] std::size_t placeOf(int row) const { return static_cast<std::size_t>(row) * step_; }
  /// -1: the collection does not hold it.
  [[nodiscard]] int rowOf(std::size_t place) const;
  [[nodiscard]] std::string const& document() const { return document_; }

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;

 private:
  Documents const& documents_;
  std::string document_;  ///< id; empty without one
  std::string collection_;
  std::size_t step_ = 1;
  int rows_ = 0;
};

}  // namespace morla::captureone
