#pragma once

#include <QWidget>
#include <memory>

#include "captureone/model/Model.h"

class QComboBox;
class QLabel;
class QStackedWidget;

namespace morla::captureone {

class ElidedLabel;
class VariantGrid;

/// The current document: one of its collections as a grid of pictures, and where it captures to.
class GalleryPage final : public QWidget {
 public:
  GalleryPage(Model& model, std::shared_ptr<PictureSet const> pictures, QWidget* parent);
  /// There must be a current document.
  void refresh();

 private:
  [[nodiscard]] QWidget* makeToolbar();
  [[nodiscard]] QWidget* makeStrip();
  void refreshCollections(Document const& document);

  Model& model_;
  QComboBox* collection_ = nullptr;
  QLabel* count_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  VariantGrid* grid_ = nullptr;
  ElidedLabel* captures_ = nullptr;
  QLabel* counter_ = nullptr;
};

}  // namespace morla::captureone
