#pragma once

#include <QPainter>
#include <QStyledItemDelegate>

namespace morla::captureone {

/// Draws the rows of a list, all of one height.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(int height, QObject* parent) : QStyledItemDelegate(parent), height_(height) {}

  [[nodiscard]] QSize sizeHint(QStyleOptionViewItem const&, QModelIndex const&) const final {
    return {100, height_};  // a list gives its rows its own width
  }

  void paint(QPainter* painter, QStyleOptionViewItem const& option, QModelIndex const& index) const final {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintRow(*painter, option, index);
    painter->restore();
  }

 protected:
  /// With smooth edges; may leave the painter as it likes.
  virtual void paintRow(QPainter& painter, QStyleOptionViewItem const& option, QModelIndex const& index) const = 0;

 private:
  int height_;
};

}  // namespace morla::captureone
