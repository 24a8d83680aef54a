#pragma once

#include <QWidget>

#include "captureone/model/Model.h"
#include "captureone/window/Style.h"

class QDoubleSpinBox;
class QLabel;
class QListView;
class QProgressBar;

namespace morla::captureone {

class JobList;

/// The processing queue: how far it is, what comes next, and what slows it down.
class QueuePanel final : public QWidget {
 public:
  QueuePanel(Model& model, QWidget* parent);
  void refresh();

 private:
  [[nodiscard]] QListView* makeList(QWidget* parent);

  Model& model_;
  JobList* list_ = nullptr;
  QLabel* progress_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QListView* view_ = nullptr;
  QDoubleSpinBox* delay_ = nullptr;
  style::Switch* stall_ = nullptr;
};

}  // namespace morla::captureone
