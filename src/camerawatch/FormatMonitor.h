#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Cancellation.h"
#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/Published.h"
#include "base/Task.h"
#include "camerawatch/CaptureOneBridge.h"
#include "camerawatch/PermissionState.h"
#include "camerawatch/StatusReply.h"
#include "platform/ScriptExecution.h"
#include "platform/UserDefaults.h"

namespace morla::platform {
class Environment;
}

namespace morla::camerawatch {

/// The camera watch: finds out whether scripts may be sent to Capture One, and while the watch is on asks once a second
/// what the camera is set to. One shared object; everything about it is confined to the main thread.
class FormatMonitor {
 public:
  /// What becomes of a reading; the side that shows alerts.
  class Alerts {
   public:
    virtual ~Alerts() = default;
    virtual void checkAndShowAlerts(std::string const& format, std::string const& iso, std::string const& aperture,
                                    std::string const& shutter) = 0;
    virtual void dismissAllAlerts() = 0;
  };

  struct Roles {
    MainLoop& loop;
    BackgroundWork& background;
    platform::ScriptRunner& scripts;
    platform::Workspace& workspace;
    platform::Files& files;
    platform::UserDefaults& defaults;
  };

  explicit FormatMonitor(Roles roles);

  [[nodiscard]] static FormatMonitor& shared();
  [[nodiscard]] static std::unique_ptr<FormatMonitor> make(platform::Environment& environment);

  /// `alerts` outlives this object; until it is set, readings are published and nothing is shown.
  void setAlerts(Alerts& alerts) { alerts_ = &alerts; }

  // The switch and the expected values, stored under their keys on every write. Switching on starts the poll (also when
  // it was on: the poll then restarts); switching off ends it and takes every alert away.
  [[nodiscard]] Published<bool> const& isEnabled() const { return isEnabled_; }
  void setIsEnabled(bool value);
  [[nodiscard]] Published<std::string> const& isoExpectedValue() const { return isoExpectedValue_; }
  void setIsoExpectedValue(std::string value);
  [[nodiscard]] Published<std::string> const& apertureExpectedValue() const { return apertureExpectedValue_; }
  void setApertureExpectedValue(std::string value);
  [[nodiscard]] Published<std::string> const& shutterExpectedValue() const { return shutterExpectedValue_; }
  void setShutterExpectedValue(std::string value);

  /// The format, or a status word (StatusReply.h); none before the first round and after a refusal.
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedFormat() const { return lastDetectedFormat_; }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedISO() const { return lastDetectedISO_; }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedAperture() const {
    return lastDetectedAperture_;
  }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetectedShutter() const {
    return lastDetectedShutter_;
  }
  [[nodiscard]] Published<std::vector<std::string>> const& availableISOs() const { return availableISOs_; }
  [[nodiscard]] Published<std::vector<std::string>> const& availableApertures() const { return availableApertures_; }
  [[nodiscard]] Published<std::vector<std::string>> const& availableShutters() const { return availableShutters_; }
  [[nodiscard]] Published<std::optional<std::string>> const& cameraName() const { return cameraName_; }
  [[nodiscard]] Published<bool> const& isCameraConnected() const { return isCameraConnected_; }
  [[nodiscard]] Published<PermissionState> const& permissionState() const { return permissionState_; }

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
  /// One round: asks, publishes, and hands a complete reading to the alerts.
  [[nodiscard]] Task<> checkCaptureFormat();

 private:
  [[nodiscard]] Task<platform::ScriptReply> runAppleScriptWithError(platform::ScriptKind kind, std::string source);
  [[nodiscard]] Task<platform::ScriptReply> runProbe();
  [[nodiscard]] Task<> poll(CancellationToken token);
  [[nodiscard]] Task<> activateSystemSettingsSoon();
  [[nodiscard]] bool isCaptureOneMissing() const;

  void stopMonitoring();
  /// What a permission check does with a refusal, remembered or fresh.
  void denyPermission();
  void dismissAllAlerts();

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
  Alerts* alerts_ = nullptr;

  Published<bool> isEnabled_;
  Published<std::string> isoExpectedValue_;
  Published<std::string> apertureExpectedValue_;
  Published<std::string> shutterExpectedValue_;
  Published<std::optional<std::string>> lastDetectedFormat_{"FormatMonitor.lastDetectedFormat"};
  Published<std::optional<std::string>> lastDetectedISO_{"FormatMonitor.lastDetectedISO"};
  Published<std::optional<std::string>> lastDetectedAperture_{"FormatMonitor.lastDetectedAperture"};
  Published<std::optional<std::string>> lastDetectedShutter_{"FormatMonitor.lastDetectedShutter"};
  Published<std::vector<std::string>> availableISOs_{"FormatMonitor.availableISOs"};
  Published<std::vector<std::string>> availableApertures_{"FormatMonitor.availableApertures"};
  Published<std::vector<std::string>> availableShutters_{"FormatMonitor.availableShutters"};
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
