#pragma once

#include <QObject>
#include <QThreadPool>
#include <memory>

#include "captureone/pictures/PictureSource.h"
#include "captureone/processing/Processor.h"

namespace morla::captureone {

/// Writes pictures on a thread of its own. Main thread; ends when the file that it is at is written.
class PictureWriter final : public QObject {
 public:
  explicit PictureWriter(std::shared_ptr<PictureSet const> pictures);
  ~PictureWriter() override;

  /// `written` is called on the main thread, after this has returned; never after this object's end.
  void write(OutputJob const& job, Processor::Written written);

 private:
  PictureSource source_;
  QThreadPool thread_;
};

}  // namespace morla::captureone
