#pragma once

#include <QAbstractListModel>
#include <QString>
#include <string>
#include <vector>

#include "captureone/model/Model.h"

namespace morla::captureone {

/// The next files of the processing queue, one a row, those that could not be written before them.
class JobList final : public QAbstractListModel {
 public:
  enum class State { failed, inWork, waiting };
  enum Role { StateRole = Qt::UserRole, RecipeRole };  ///< an int that is a `State`; a text
  /// Rows; nobody reads thousands of them.
  static constexpr std::size_t kMostShown = 100;
  static constexpr std::size_t kMostFailures = 20;  ///< of those, the last ones

  JobList(Model const& model, QObject* parent) : QAbstractListModel(parent), model_(model) {}
  void refresh();

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;

 private:
  struct Row {
    std::string id;
    QString name;
    QString recipe;
    QString explanation;
    State state = State::waiting;
    friend bool operator==(Row const&, Row const&) = default;
  };
  [[nodiscard]] std::vector<Row> rowsNow() const;

  Model const& model_;
  std::vector<Row> rows_;
};

}  // namespace morla::captureone
