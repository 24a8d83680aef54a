#pragma once

#include <QWidget>

#include "captureone/model/Model.h"

class QListView;
class QPushButton;

namespace morla::captureone {

class RecipeList;

/// The recipes of the current document: which are enabled, what they are called, what they write where.
class RecipePanel final : public QWidget {
 public:
  RecipePanel(Model& model, QWidget* parent);
  void refresh();

 private:
  [[nodiscard]] QPushButton* makeButton(QString const& text, QString const& name);
  void addRecipe();
  void removeRecipe();

  Model& model_;
  RecipeList* list_ = nullptr;
  QListView* view_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* remove_ = nullptr;
};

}  // namespace morla::captureone
