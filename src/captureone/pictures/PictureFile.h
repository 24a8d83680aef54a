#pragma once

#include <optional>
#include <string>

#include "captureone/model/ProcessingQueue.h"
#include "captureone/pictures/PictureSource.h"

namespace morla::captureone {

/// Writes the file of a job: makes its folder, takes the next free name, fills it. The file is empty until its content
/// is there, and goes away again when that cannot be written. Any thread; takes as long as it takes.
///
/// Answers why there is no file; nothing when there is one, also when it was there already and the recipe skips those.
[[nodiscard]] std::optional<std::string> writePicture(OutputJob const& job, PictureSource const& source);

}  // namespace morla::captureone
