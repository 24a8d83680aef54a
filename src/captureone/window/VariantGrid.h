#pragma once

#include <QListView>
#include <memory>
#include <vector>

#include "captureone/model/Documents.h"
#include "captureone/window/Thumbnails.h"
#include "captureone/window/VariantList.h"

namespace morla::captureone {

/// The pictures of the current collection, selected by mouse and keyboard. The selection is the model's: what is
/// selected here is selected there at once, and `refresh` takes over what others have selected.
class VariantGrid final : public QListView {
 public:
  VariantGrid(Documents& documents, std::shared_ptr<PictureSet const> pictures, QWidget* parent);
  void refresh();
  [[nodiscard]] Thumbnails const& thumbnails() const { return *thumbnails_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(QItemSelection const& selected, QItemSelection const& deselected) override;

 private:
  class Delegate;
  void fitCells();
  void updatePicture(std::size_t picture);
  [[nodiscard]] std::vector<bool> selectedRows() const;
  void selectRows(std::vector<bool> const& wanted);

  Documents& documents_;
  VariantList* list_ = nullptr;
  Delegate* delegate_ = nullptr;
  std::unique_ptr<Thumbnails> thumbnails_;
  bool isFollowing_ = false;
};

}  // namespace morla::captureone
