#include "captureone/pictures/PictureWriter.h"

#include <utility>

#include "captureone/pictures/PictureFile.h"

namespace morla::captureone {

PictureWriter::PictureWriter(std::shared_ptr<PictureSet const> pictures) : source_(std::move(pictures)) {
  thread_.setMaxThreadCount(1);
}

PictureWriter::~PictureWriter() {
  thread_.clear();
  thread_.waitForDone();
}

void PictureWriter::write(OutputJob const& job, Processor::Written written) {
  thread_.start([this, job, written = std::move(written)] {
    auto failure = writePicture(job, source_);
    QMetaObject::invokeMethod(
        this, [written, failure = std::move(failure)] { written(failure); }, Qt::QueuedConnection);
  });
}

}  // namespace morla::captureone
