#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Cancellation.h"
#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/Published.h"
#include "base/Task.h"
#include "camerawatch/Alert.h"
#include "camerawatch/CaptureOneBridge.h"
#include "camerawatch/PermissionState.h"
#include "camerawatch/StatusReply.h"
#include "camerawatch/WatchedValue.h"
#include "platform/ScriptExecution.h"
#include "platform/UserDefaults.h"

namespace morla::platform {
class Environment;
}

namespace morla::camerawatch {

/// The camera watch: finds out whether scripts may be sent to Capture One, and while the watch is on asks once a second
/// what the camera is set to and raises an alert for what it should not be. One shared object; everything about it is
/// confined to the main thread.
class FormatMonitor {
 public:
  struct Roles {
    MainLoop& loop;
    BackgroundWork& background;
    platform::ScriptRunner& scripts;
    platform::Workspace& workspace;
    platform::Files& files;
    platform::UserDefaults& defaults;
    platform::PanelHost& panels;
  };

  explicit FormatMonitor(Roles roles);

  [[nodiscard]] static FormatMonitor& shared();
  [[nodiscard]] static std::unique_ptr<FormatMonitor> make(platform::Environment& environment);

  // The switches and the expected values, stored under their keys on every write. Switching anything on starts the poll
  // (also when it was on: the poll then restarts). Switching the watch off ends the poll and takes every alert away;
  // switching one kind off hides its alert in the next round.
  [[nodiscard]] Published<bool> const& isEnabled() const { return isEnabled_; }
  void setIsEnabled(bool value);
  [[nodiscard]] Published<bool> const& isoAlertEnabled() const { return iso_.alertEnabled(); }
  void setIsoAlertEnabled(bool value) { setAlertEnabled(iso_, value); }
  [[nodiscard]] Published<bool> const& apertureAlertEnabled() const { return aperture_.alertEnabled(); }
  void setApertureAlertEnabled(bool value) { setAlertEnabled(aperture_, value); }
  [[nodiscard]] Published<bool> const& shutterAlertEnabled() const { return shutter_.alertEnabled(); }
  void setShutterAlertEnabled(bool value) { setAlertEnabled(shutter_, value); }
  [[nodiscard]] Published<std::string> const& isoExpectedValue() const { return iso_.expectedValue(); }
  void setIsoExpectedValue(std::string value) { iso_.setExpectedValue(std::move(value)); }
  [[nodiscard]] Published<std::string> const& apertureExpectedValue() const { return aperture_.expectedValue(); }
  void setApertureExpectedValue(std::string value) { aperture_.setExpectedValue(std::move(value)); }
  [[nodiscard]] Published<std::string> const& shutterExpectedValue() const { return shutter_.expectedValue(); }
  void setShutterExpectedValue(std::string value) { shutter_.setExpectedValue(std::move(value)); }

  /// The format, or a status word (StatusReply.h); none before the first round and after a refusal.
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedFormat() const { return lastDetectedFormat_; }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedISO() const { return iso_.lastDetected(); }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedAperture() const {
    return aperture_.lastDetected();
  }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedShutter() const {
    return shutter_.lastDetected();
  }
  [[nodiscard]] Published<std::vector<std::string>> const& availableISOs() const { return iso_.available(); }
  [[nodiscard]] Published<std::vector<std::string>> const& availableApertures() const { return aperture_.available(); }
  [[nodiscard]] Published<std::vector<std::string>> const& availableShutters() const { return shutter_.available(); }
  [[nodiscard]] Published<std::optional<std::string>> const& cameraName() const { return cameraName_; }
  [[nodiscard]] Published<bool> const& isCameraConnected() const { return isCameraConnected_; }
  [[nodiscard]] Published<PermissionState> const& permissionState() const { return permissionState_; }

  // Whether each kind of alert is on the screen.
  [[nodiscard]] Published<bool> const& isAlertShowing() const { return formatAlert_.isShowing(); }
  [[nodiscard]] Published<bool> const& isIsoAlertShowing() const { return iso_.alert().isShowing(); }
  [[nodiscard]] Published<bool> const& isApertureAlertShowing() const { return aperture_.alert().isShowing(); }
  [[nodiscard]] Published<bool> const& isShutterAlertShowing() const { return shutter_.alert().isShowing(); }

  /// The entry at start-up: checks the permission, and with it starts the poll when the watch is on.
  [[nodiscard]] Task<> checkAndStartIfNeeded();
  /// Sends the probe and decides `permissionState`; starts or stops the poll accordingly when the watch is on.
  [[nodiscard]] Task<> checkPermissionState();
  /// The same on the user's request, with this program in front so that the system's question is seen. True when the
  /// probe answered; starting the poll is left to the caller. No answer leaves the state as it was.
  [[nodiscard]] Task<bool> requestPermission();
  /// Opens the system's page of automation permissions and brings it to the front.
  void openAutomationSettings();

  /// Starts the poll anew; does nothing unless the watch is on and the permission is there. The old task's waiting
  /// round still applies its reply.
  void startMonitoring();
  /// One round: asks, publishes, and checks a complete reading.
  [[nodiscard]] Task<> checkCaptureFormat();

  /// Compares a reading with what is expected, and shows, refreshes or takes away each kind of alert. The format must
  /// be some kind of RAW, which is all that its text has to say; the other values are compared exactly.
  void checkAndShowAlerts(std::string const& format, std::string const& iso, std::string const& aperture,
                          std::string const& shutter);
  void showFormatAlert(std::string const& format);
  void showIsoAlert(std::string const& detected, std::string const& expected) { iso_.showAlert(detected, expected); }
  void showApertureAlert(std::string const& detected, std::string const& expected) {
    aperture_.showAlert(detected, expected);
  }
  void showShutterAlert(std::string const& detected, std::string const& expected) {
    shutter_.showAlert(detected, expected);
  }
  /// No alert is ever on the screen while nobody knows what the camera is set to.
  void dismissAllAlerts();

 private:
  [[nodiscard]] Task<platform::ScriptReply> runAppleScriptWithError(platform::ScriptKind kind, std::string source);
  [[nodiscard]] Task<platform::ScriptReply> runProbe();
  [[nodiscard]] Task<> poll(CancellationToken token);
  [[nodiscard]] Task<> activateSystemSettingsSoon();
  [[nodiscard]] bool isCaptureOneMissing() const;

  void setAlertEnabled(WatchedValue& value, bool isOn);
  void stopMonitoring();
  /// What a permission check does with a refusal, remembered or fresh.
  void denyPermission();

  void apply(platform::ScriptReply const& reply);
  void publish(CameraReading const& reading);
  void publish(NoReading const& reply);
  void rememberCamera(std::string const& name);
  void handleCameraChanged(std::string const& from, std::string const& to);
  void clearCameraState();

  MainLoop& loop_;
  platform::Workspace& workspace_;
  platform::UserDefaults& defaults_;
  CaptureOneBridge bridge_;
  platform::ScriptExecution scripts_;

  Published<bool> isEnabled_;
  Alert formatAlert_;
  WatchedValue iso_;
  WatchedValue aperture_;
  WatchedValue shutter_;
  /// In the order in which they are published, checked and dismissed.
  std::array<WatchedValue*, 3> values_{&iso_, &aperture_, &shutter_};
  Published<std::optional<std::string>> lastDetectedFormat_{"FormatMonitor.lastDetectedFormat"};
  Published<std::optional<std::string>> cameraName_{"FormatMonitor.cameraName"};
  Published<bool> isCameraConnected_{"FormatMonitor.isCameraConnected"};
  Published<PermissionState> permissionState_{"FormatMonitor.permissionState", PermissionState::checking};

  /// The running poll's way to be ended; none while idle.
  std::optional<CancellationSource> monitoringTask_;
  /// The name in the previous reading that had one; never cleared, so that a camera which only went away for a while
  /// does not count as another.
  std::optional<std::string> lastCameraName_;

  Lifetime life_;
};

}  // namespace morla::camerawatch
