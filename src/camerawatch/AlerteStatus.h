#pragma once

#include <string>

#include "camerawatch/FormatMonitor.h"
#include "view/Style.h"

namespace morla::camerawatch {

/// What the camera watch is doing, in one line.
[[nodiscard]] std::string statusText(FormatMonitor const& monitor);
/// The colour of the indicator beside it. Also green when Capture One gave no answer, which is not the camera's fault.
[[nodiscard]] view::SystemColour statusColor(FormatMonitor const& monitor);

}  // namespace morla::camerawatch
