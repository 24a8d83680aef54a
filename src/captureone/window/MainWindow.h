#pragma once

#include <QMainWindow>
#include <QTimer>

#include "captureone/control/Controls.h"
#include "captureone/model/Model.h"

class QLabel;

namespace morla::captureone {

class CameraPanel;
class DocumentArea;
class FaultPanel;

/// The simulator's window. A person can change here whatever a key can. It shows the model as it is at any moment;
/// only the count of events comes a little later.
class MainWindow final : public QMainWindow {
 public:
  /// Both must outlive the window.
  MainWindow(Model& model, Controls& controls, QString const& title);

  /// Returns when what the model is now has been drawn.
  void settle();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeHeader(QString const& title);
  [[nodiscard]] QWidget* makeColumn();
  [[nodiscard]] QWidget* makeFooter();
  void refresh();
  void showEvents();

  Model& model_;
  Controls& controls_;
  CameraPanel* camera_ = nullptr;
  FaultPanel* faults_ = nullptr;
  DocumentArea* documents_ = nullptr;
  QLabel* events_ = nullptr;
  QTimer eventsDue_;
  Subscription modelChanges_;
  Subscription modelEvents_;
  Subscription keyChanges_;
};

}  // namespace morla::captureone
