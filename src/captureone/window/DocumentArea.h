#pragma once

#include <QWidget>
#include <memory>

#include "captureone/model/Model.h"

class QPushButton;
class QStackedWidget;
class QTabBar;

namespace morla::captureone {

class GalleryPage;

/// The open documents as tabs, and the current one below them.
class DocumentArea final : public QWidget {
 public:
  DocumentArea(Model& model, std::shared_ptr<PictureSet const> pictures, QWidget* parent);
  void refresh();

 private:
  [[nodiscard]] QWidget* makeTabRow();
  [[nodiscard]] QWidget* makeEmptyPage();
  [[nodiscard]] QPushButton* makeOpenButton(QString const& text, QString const& name, DocumentKind kind,
                                            QWidget* parent);
  void refreshTabs();
  void closeTab(int index);

  Model& model_;
  QTabBar* tabs_ = nullptr;
  QPushButton* openSession_ = nullptr;
  QPushButton* openCatalog_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  GalleryPage* gallery_ = nullptr;
};

}  // namespace morla::captureone
