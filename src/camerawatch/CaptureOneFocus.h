#pragma once

#include <optional>
#include <string>

#include "platform/Workspace.h"

namespace morla::camerawatch {

/// Whether an application's localized name is that of some edition of Capture One: case-blind, anywhere in the name.
/// An absent name is the empty text.
[[nodiscard]] bool isCaptureOneName(std::optional<std::string> const& localizedName);

/// Keeps the photographer's keyboard and mouse with Capture One. Main thread.
class CaptureOneFocus {
 public:
  explicit CaptureOneFocus(platform::Workspace& workspace) : workspace_(workspace) {}

  /// The first running application, in the system's order, that is a Capture One.
  [[nodiscard]] std::optional<platform::RunningApplication> captureOneRunningApp() const;

  /// Brings Capture One to the front if it runs.
  void activateIfRunning() const;

 private:
  platform::Workspace& workspace_;
};

}  // namespace morla::camerawatch
