#pragma once

#include <optional>
#include <string>
#include <vector>

#include "camerawatch/CaptureOneFocus.h"
#include "platform/Files.h"
#include "platform/Workspace.h"

namespace morla::camerawatch {

/// One installed copy of Capture One.
struct CaptureOneAppInfo {
  std::string url;                     ///< path of the bundle, a folder whose name ends in ".app"
  std::string bundleId;                ///< never empty
  std::optional<std::string> version;  ///< short version
  std::string displayName;             ///< the bundle's name, else its file name without extension
  friend bool operator==(CaptureOneAppInfo const&, CaptureOneAppInfo const&) = default;
};

/// Finds Capture One and names it inside a script. Looks every time and caches nothing, so that an installation or a
/// quit is seen at once. Main thread.
class CaptureOneBridge {
 public:
  CaptureOneBridge(platform::Workspace& workspace, platform::Files& files) : workspace_(workspace), files_(files) {}

  [[nodiscard]] std::optional<platform::RunningApplication> captureOneRunningApp() const;

  /// The copies in the two applications folders, the system's first, in listing order; nothing is merged. A folder that
  /// cannot be listed and a bundle that cannot be read contribute nothing.
  [[nodiscard]] std::vector<CaptureOneAppInfo> installedCaptureOneApps() const;

  /// The copy at `url` (a path), or nothing when there is no bundle or it has no identifier.
  [[nodiscard]] std::optional<CaptureOneAppInfo> captureOneAppInfo(std::string const& url) const;

  /// The first copy named exactly "Capture One.app" (case-blind), else the one with the highest version.
  [[nodiscard]] std::optional<CaptureOneAppInfo> preferredCaptureOneApp() const;

  /// What stands after `tell`: the running copy by identifier, else the preferred installed one, else the plain name.
  [[nodiscard]] std::string appleScriptTarget() const;

 private:
  platform::Workspace& workspace_;
  platform::Files& files_;
};

/// Compares versions number by number, so that "16.2.1" is above "9.3".
[[nodiscard]] int compareNumerically(std::string_view a, std::string_view b);

}  // namespace morla::camerawatch
