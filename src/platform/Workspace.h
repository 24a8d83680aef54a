#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Subscription.h"

namespace morla::platform {

/// A running application, as the desktop knew it when asked.
struct RunningApplication {
  std::int64_t processIdentifier = 0;
  std::optional<std::string> localizedName;
  std::optional<std::string> bundleIdentifier;
  friend bool operator==(RunningApplication const&, RunningApplication const&) = default;
};

/// What an application bundle's Info.plist says.
struct BundleInformation {
  std::optional<std::string> identifier;    ///< CFBundleIdentifier
  std::optional<std::string> name;          ///< CFBundleName, when it is text
  std::optional<std::string> shortVersion;  ///< CFBundleShortVersionString, when it is text
};

/// The applications of the desktop. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// In the system's order.
  [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;

  /// The application, never a window, that has the user's attention; none while there is none.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

  /// Calls `observer` after the frontmost application has become another one.
  [[nodiscard]] virtual Subscription onActivated(std::function<void()> observer) = 0;

  /// Brings `application` to the front, in front of whatever has the focus. When it is frontmost already, it only gets
  /// the keyboard back; no window is raised. Nothing happens when it has ended.
  virtual void activate(RunningApplication const& application) = 0;

  /// Makes this program the frontmost application, until another one gets the focus.
  virtual void activateSelf() = 0;

  /// The bundle at `path` (an absolute folder path), or nothing when there is none or its Info.plist cannot be read.
  [[nodiscard]] virtual std::optional<BundleInformation> bundleAt(std::string const& path) = 0;

  /// Opens an address with the application that handles it; false when there is none.
  virtual bool openUrl(std::string const& url) = 0;
};

}  // namespace morla::platform
