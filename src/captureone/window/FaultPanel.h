#pragma once

#include <QWidget>

#include "captureone/control/Controls.h"
#include "captureone/model/Model.h"
#include "captureone/window/Style.h"

class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace morla::captureone {

/// What shall go wrong when scripts speak to the application, and whether MORLA may speak to it at all.
class FaultPanel final : public QWidget {
 public:
  FaultPanel(Model& model, Controls& controls, QWidget* parent);
  void refresh();
  /// Reads the user's store of permissions, which `refresh` does not.
  void refreshAutomation();

 private:
  Model& model_;
  Controls& controls_;
  QComboBox* automation_ = nullptr;
  QDoubleSpinBox* delay_ = nullptr;
  style::Switch* silent_ = nullptr;
  QSpinBox* quitAt_ = nullptr;
  QSpinBox* refuseAt_ = nullptr;
  QComboBox* standIn_ = nullptr;
  QLineEdit* reply_ = nullptr;
};

}  // namespace morla::captureone
