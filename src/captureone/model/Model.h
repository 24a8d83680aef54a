#pragma once

#include <functional>
#include <utility>

#include "captureone/model/Cameras.h"
#include "captureone/model/Changes.h"
#include "captureone/model/Documents.h"
#include "captureone/model/Faults.h"
#include "captureone/model/ProcessingQueue.h"

namespace morla::captureone {

/// Everything the simulated application is, without a window, a bus or a clock. The window, the scripts and the control
/// tool all read and change this one object. Main thread.
class Model {
 public:
  explicit Model(Surroundings surroundings = {})
      : documents_(changes_, std::move(surroundings)), cameras_(changes_), queue_(changes_), faults_(changes_) {}

  [[nodiscard]] Documents& documents() { return documents_; }
  [[nodiscard]] Documents const& documents() const { return documents_; }
  [[nodiscard]] Cameras& cameras() { return cameras_; }
  [[nodiscard]] Cameras const& cameras() const { return cameras_; }
  [[nodiscard]] ProcessingQueue& queue() { return queue_; }
  [[nodiscard]] ProcessingQueue const& queue() const { return queue_; }
  [[nodiscard]] Faults& faults() { return faults_; }
  [[nodiscard]] Faults const& faults() const { return faults_; }

  /// Whether the window has the focus.
  [[nodiscard]] bool isFrontmost() const { return isFrontmost_; }
  void setFrontmost(bool isFrontmost) {
    if (std::exchange(isFrontmost_, isFrontmost) != isFrontmost) changes_.announce();
  }

  /// Any change but that of the count of events.
  Subscription onChange(std::function<void()> observer) { return changes_.observe(std::move(observer)); }
  /// An event has been counted.
  Subscription onEvent(std::function<void()> observer) { return changes_.observeEvents(std::move(observer)); }

  /// Back to how the program starts, told as one change.
  void reset() {
    Changes::Batch const batch(changes_);
    documents_.reset();
    cameras_.reset();
    queue_.reset();
    faults_.reset();
  }

 private:
  Changes changes_;
  Documents documents_;
  Cameras cameras_;
  ProcessingQueue queue_;
  Faults faults_;
  bool isFrontmost_ = false;
};

}  // namespace morla::captureone
