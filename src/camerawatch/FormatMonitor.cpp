#include "camerawatch/FormatMonitor.h"

#include <chrono>
#include <utility>

#include "base/unicode/Unicode.h"
#include "camerawatch/AlertViews.h"
#include "camerawatch/ScriptTexts.h"
#include "camerawatch/SettingsKeys.h"
#include "platform/Environment.h"

namespace morla::camerawatch {
namespace {

constexpr Duration kPollInterval = std::chrono::seconds(1);

constexpr ValueKind kIso{"FormatMonitor.isoAlertEnabled",
                         "FormatMonitor.isoExpectedValue",
                         "FormatMonitor.lastDetectedISO",
                         "FormatMonitor.availableISOs",
                         "FormatMonitor.isIsoAlertShowing",
                         keys::kIsoAlertEnabled,
                         keys::kIsoExpectedValue,
                         keys::kIsoAlert,
                         &ISOAlertView};
constexpr ValueKind kAperture{"FormatMonitor.apertureAlertEnabled",
                              "FormatMonitor.apertureExpectedValue",
                              "FormatMonitor.lastDetectedAperture",
                              "FormatMonitor.availableApertures",
                              "FormatMonitor.isApertureAlertShowing",
                              keys::kApertureAlertEnabled,
                              keys::kApertureExpectedValue,
                              keys::kApertureAlert,
                              &ApertureAlertView};
constexpr ValueKind kShutter{"FormatMonitor.shutterAlertEnabled",
                             "FormatMonitor.shutterExpectedValue",
                             "FormatMonitor.lastDetectedShutter",
                             "FormatMonitor.availableShutters",
                             "FormatMonitor.isShutterAlertShowing",
                             keys::kShutterAlertEnabled,
                             keys::kShutterExpectedValue,
                             keys::kShutterAlert,
                             &ShutterAlertView};

}  // namespace

FormatMonitor::FormatMonitor(Roles roles)
    : loop_(roles.loop),
      workspace_(roles.workspace),
      defaults_(roles.defaults),
      bridge_(roles.workspace, roles.files),
      scripts_(roles.loop, roles.background, roles.scripts),
      isEnabled_("FormatMonitor.isEnabled", roles.defaults.boolean(keys::kFormatMonitorEnabled).value_or(false)),
      formatAlert_({roles.panels, roles.defaults}, "FormatMonitor.isAlertShowing", keys::kFormatAlert),
      iso_(kIso, {roles.panels, roles.defaults}),
      aperture_(kAperture, {roles.panels, roles.defaults}),
      shutter_(kShutter, {roles.panels, roles.defaults}) {}

FormatMonitor& FormatMonitor::shared() {
  return platform::Environment::active().shared<FormatMonitor>();
}

std::unique_ptr<FormatMonitor> FormatMonitor::make(platform::Environment& environment) {
  auto& p = environment.platform();
  return std::make_unique<FormatMonitor>(
      Roles{p.mainLoop, p.background, p.scripts, p.workspace, p.files, p.defaults, p.panels});
}

void FormatMonitor::setIsEnabled(bool value) {
  isEnabled_.set(value);
  defaults_.set(keys::kFormatMonitorEnabled, value);
  if (value) {
    startMonitoring();
  } else {
    stopMonitoring();
    dismissAllAlerts();
  }
}

void FormatMonitor::setAlertEnabled(WatchedValue& value, bool isOn) {
  value.setAlertEnabled(isOn);
  if (isOn) startMonitoring();
}

void FormatMonitor::startMonitoring() {
  if (!isEnabled_.get() || permissionState_.get() != PermissionState::ready) return;
  stopMonitoring();
  monitoringTask_.emplace();
  // The first round begins on a turn of its own, so that whoever starts the poll has finished first.
  loop_.post(life_.weak([this, token = monitoringTask_->token()] { detach(poll(token)); }));
}

void FormatMonitor::stopMonitoring() {
  if (monitoringTask_) monitoringTask_->cancel();
  monitoringTask_.reset();
}

Task<> FormatMonitor::poll(CancellationToken token) {
  auto const alive = life_.reference();
  while (!token.isCancelled()) {
    co_await checkCaptureFormat();
    if (!alive) co_return;
    co_await sleepFor(loop_, kPollInterval, token);
    if (!alive) co_return;
  }
}

Task<> FormatMonitor::checkCaptureFormat() {
  auto const alive = life_.reference();
  // Asked before any script is sent, so that no status script ever starts Capture One.
  if (!bridge_.captureOneRunningApp()) {
    lastDetectedFormat_.set(std::string(status::kNotRunning));
    for (auto* value : values_) value->setLastDetected(std::nullopt);
    dismissAllAlerts();
    co_return;
  }
  auto source = "tell " + bridge_.appleScriptTarget() + std::string(scripts::kStatus);
  auto const reply = co_await runAppleScriptWithError(platform::ScriptKind::status, std::move(source));
  if (alive) apply(reply);
}

void FormatMonitor::apply(platform::ScriptReply const& reply) {
  if (reply.error && reply.error->number == platform::kErrorNotPermitted) {
    defaults_.set(keys::kAutomationPermissionDenied, true);
    permissionState_.set(PermissionState::permissionDenied);
    lastDetectedFormat_.set(std::nullopt);
    stopMonitoring();
    dismissAllAlerts();
  } else if (!reply.text) {
    lastDetectedFormat_.set(std::string(status::kError));
    dismissAllAlerts();
  } else {
    std::visit([this](auto const& parsed) { publish(parsed); }, parseStatusReply(*reply.text));
  }
}

void FormatMonitor::publish(NoReading const& reply) {
  lastDetectedFormat_.set(reply.text);
  clearCameraState();
  dismissAllAlerts();
}

void FormatMonitor::publish(CameraReading const& reading) {
  lastDetectedFormat_.set(reading.format);
  iso_.setLastDetected(reading.iso);
  aperture_.setLastDetected(reading.aperture);
  shutter_.setLastDetected(reading.shutter);
  isCameraConnected_.set(true);
  if (reading.available) {
    iso_.setAvailable(reading.available->isos);
    aperture_.setAvailable(reading.available->apertures);
    shutter_.setAvailable(reading.available->shutters);
  }
  // After the lists, so that a change of camera is judged by what the new one offers.
  if (reading.cameraName) rememberCamera(*reading.cameraName);
  checkAndShowAlerts(reading.format, reading.iso, reading.aperture, reading.shutter);
}

void FormatMonitor::rememberCamera(std::string const& name) {
  if (lastCameraName_ && *lastCameraName_ != name) handleCameraChanged(*lastCameraName_, name);
  cameraName_.set(name);
  lastCameraName_ = name;
}

/// Which cameras they are makes no difference: an expectation that the new one cannot meet is given up.
void FormatMonitor::handleCameraChanged(std::string const& /*from*/, std::string const& /*to*/) {
  for (auto* value : values_) value->dropUnavailableExpectation();
}

void FormatMonitor::clearCameraState() {
  for (auto* value : values_) value->setLastDetected(std::nullopt);
  isCameraConnected_.set(false);
}

void FormatMonitor::checkAndShowAlerts(std::string const& format, std::string const& iso, std::string const& aperture,
                                       std::string const& shutter) {
  bool const isRaw = unicode::lowercased(format).find("raw") != std::string::npos;
  if (isEnabled_.get() && !isRaw) {
    showFormatAlert(format);
  } else {
    formatAlert_.dismiss();
  }
  iso_.check(iso);
  aperture_.check(aperture);
  shutter_.check(shutter);
}

void FormatMonitor::showFormatAlert(std::string const& format) {
  formatAlert_.show(FormatAlertView(format));
}

void FormatMonitor::dismissAllAlerts() {
  formatAlert_.dismiss();
  for (auto* value : values_) value->dismissAlert();
}

}  // namespace morla::camerawatch
