#pragma once

#include <string>
#include <vector>

#include "support/ReportingProcess.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {

/// An X server with a window manager for this test program alone: two monitors side by side, 1280 x 800 pixels each.
/// The environment variables that a program finds its desktop by point there from then on.
class PrivateDesktop {
 public:
  /// `windowManager`: openbox or xfwm4.
  explicit PrivateDesktop(std::string const& windowManager);
  ~PrivateDesktop();
  PrivateDesktop(PrivateDesktop const&) = delete;
  PrivateDesktop& operator=(PrivateDesktop const&) = delete;

  static constexpr int kMonitorWidth = 1280;
  static constexpr int kMonitorHeight = 800;

  /// A program whose output goes to the log of the desktop.
  [[nodiscard]] support::ChildProcess run(std::vector<std::string> command);

  void plugRightMonitor();
  void unplugRightMonitor();

 private:
  void startWindowManager(std::string const& name);

  support::TemporaryFolder home_;
  support::FileDescriptor log_;
  support::ReportingProcess server_;
  support::ReportingProcess bus_;
  support::ChildProcess windowManager_;
};

}  // namespace morla::linux
