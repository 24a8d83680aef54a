#pragma once

#include <QWidget>

#include "captureone/model/Model.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace morla::captureone {

/// What the current document is, how many pictures it has and where it captures to.
class DocumentPanel final : public QWidget {
 public:
  DocumentPanel(Model& model, QWidget* parent);
  void refresh();

 private:
  /// Applies `set` to the current document.
  template <typename Set>
  void change(Set set);

  Model& model_;
  QComboBox* kind_ = nullptr;
  QSpinBox* variants_ = nullptr;
  QLineEdit* captures_ = nullptr;
  QComboBox* form_ = nullptr;
  QSpinBox* counter_ = nullptr;
};

}  // namespace morla::captureone
