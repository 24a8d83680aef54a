#include "camerawatch/CaptureOneFocus.h"

#include "base/unicode/Unicode.h"

namespace morla::camerawatch {

bool isCaptureOneName(std::optional<std::string> const& localizedName) {
  return localizedName && unicode::lowercased(*localizedName).find("capture one") != std::string::npos;
}

std::optional<platform::RunningApplication> CaptureOneFocus::captureOneRunningApp() const {
  for (auto& application : workspace_.runningApplications()) {
    if (isCaptureOneName(application.localizedName)) return std::move(application);
  }
  return std::nullopt;
}

void CaptureOneFocus::activateIfRunning() const {
  if (auto const application = captureOneRunningApp()) workspace_.activate(*application);
}

}  // namespace morla::camerawatch
