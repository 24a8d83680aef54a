#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "captureone/model/Model.h"
#include "captureone/window/Section.h"
#include "captureone/window/Style.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace morla::captureone {

/// The camera's values at the left of the window. Whatever is changed here is changed in the model at once; what the
/// model says is shown by `refresh`.
class CameraPanel final : public QWidget {
 public:
  CameraPanel(Model& model, QWidget* parent);
  void refresh();

 private:
  struct SettingRow {
    QComboBox* value = nullptr;
    QLineEdit* available = nullptr;
  };
  [[nodiscard]] Section* makeBodySection();
  [[nodiscard]] Section* makeValueSection();
  [[nodiscard]] Section* makeOfferSection();
  void refreshPicker();
  void refreshSetting(CameraSetting which);

  struct Shown {
    std::vector<Camera> cameras;
    std::size_t current = 0;

    [[nodiscard]] Camera const* camera() const { return current < cameras.size() ? &cameras[current] : nullptr; }
    friend bool operator==(Shown const&, Shown const&) = default;
  };

  Model& model_;
  std::optional<Shown> shown_;
  QComboBox* picker_ = nullptr;
  QLineEdit* name_ = nullptr;
  style::Switch* connected_ = nullptr;
  style::Switch* power_ = nullptr;
  QSpinBox* count_ = nullptr;
  std::array<SettingRow, kCameraSettings.size()> settings_;
};

}  // namespace morla::captureone
