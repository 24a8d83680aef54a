#pragma once

#include <QWidget>

#include "captureone/model/Model.h"

class QComboBox;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace morla::captureone {

/// The open documents as tabs, and the current one below them.
class DocumentArea final : public QWidget {
 public:
  DocumentArea(Model& model, QWidget* parent);
  void refresh();

 private:
  [[nodiscard]] QWidget* makeTabRow();
  [[nodiscard]] QWidget* makeEmptyPage();
  [[nodiscard]] QWidget* makeDocumentPage();
  [[nodiscard]] QPushButton* makeOpenButton(QString const& text, DocumentKind kind, QWidget* parent);
  void refreshTabs();
  void closeTab(int index);

  Model& model_;
  QTabBar* tabs_ = nullptr;
  QPushButton* openSession_ = nullptr;
  QPushButton* openCatalog_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QLabel* name_ = nullptr;
  QComboBox* kind_ = nullptr;
  QLabel* readout_ = nullptr;
  QLabel* state_ = nullptr;
};

}  // namespace morla::captureone
