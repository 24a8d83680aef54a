#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

#include "captureone/model/Documents.h"

namespace morla::captureone {

/// The recipes of the current document, one a row, with check boxes and names that can be changed.
class RecipeList final : public QAbstractListModel {
 public:
  enum Role { FormatRole = Qt::UserRole, DestinationRole };  ///< texts

  RecipeList(Documents& documents, QObject* parent) : QAbstractListModel(parent), documents_(documents) {}

  /// Takes over what the current document has now.
  void refresh();
  /// Of the recipe in that row; empty where there is none.
  [[nodiscard]] std::string handleOf(int row) const;

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
  }
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(QModelIndex const& index) const override;
  bool setData(QModelIndex const& index, QVariant const& value, int role) override;

 private:
  Documents& documents_;
  std::string document_;       ///< id; empty without one
  std::vector<Recipe> shown_;  ///< as they were at the last refresh
};

}  // namespace morla::captureone
