#pragma once

#include <QColor>
#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "captureone/control/Controls.h"
#include "captureone/model/Model.h"

class QLabel;

namespace morla::captureone {

class CameraPanel;
class DocumentArea;
class DocumentPanel;
class ElidedLabel;
class FaultPanel;
class QueuePanel;
class RecipePanel;

/// The simulator's window. A person can change here whatever a key can. It shows the model as it is at any moment;
/// only the count of events comes a little later.
class MainWindow final : public QMainWindow {
 public:
  /// Model and controls must outlive the window. `pictures` are the model's.
  MainWindow(Model& model, Controls& controls, std::shared_ptr<PictureSet const> pictures, QString const& title);

  /// Returns when what the model is now has been drawn; only thumbnails may come later.
  void settle();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeHeader(QString const& title);
  [[nodiscard]] QWidget* makeCameraColumn();
  [[nodiscard]] QWidget* makeDocumentColumn();
  [[nodiscard]] QWidget* makeFooter();
  void refresh();
  void showCamera();
  void showEvents();

  Model& model_;
  Controls& controls_;
  CameraPanel* camera_ = nullptr;
  FaultPanel* faults_ = nullptr;
  RecipePanel* recipes_ = nullptr;
  QueuePanel* queue_ = nullptr;
  DocumentPanel* document_ = nullptr;
  DocumentArea* documents_ = nullptr;
  QLabel* lamp_ = nullptr;
  QColor lampColour_;
  ElidedLabel* cameraState_ = nullptr;
  QLabel* readout_ = nullptr;
  QLabel* events_ = nullptr;
  QTimer eventsDue_;
  Subscription modelChanges_;
  Subscription modelEvents_;
  Subscription keyChanges_;
};

}  // namespace morla::captureone
