#include "camerawatch/FormatMonitor.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "camerawatch/ScriptTexts.h"
#include "camerawatch/SettingsKeys.h"
#include "platform/Environment.h"

namespace morla::camerawatch {
namespace {

constexpr Duration kPollInterval = std::chrono::seconds(1);

template <typename T>
bool contains(std::vector<T> const& values, T const& value) {
  return std::ranges::find(values, value) != values.end();
}

}  // namespace

FormatMonitor::FormatMonitor(Roles roles)
    : loop_(roles.loop),
      workspace_(roles.workspace),
      defaults_(roles.defaults),
      bridge_(roles.workspace, roles.files),
      scripts_(roles.loop, roles.background, roles.scripts),
      isEnabled_("FormatMonitor.isEnabled", roles.defaults.boolean(keys::kFormatMonitorEnabled).value_or(false)),
      isoExpectedValue_("FormatMonitor.isoExpectedValue", roles.defaults.text(keys::kIsoExpectedValue).value_or("")),
      apertureExpectedValue_("FormatMonitor.apertureExpectedValue",
                             roles.defaults.text(keys::kApertureExpectedValue).value_or("")),
      shutterExpectedValue_("FormatMonitor.shutterExpectedValue",
                            roles.defaults.text(keys::kShutterExpectedValue).value_or("")) {}

FormatMonitor& FormatMonitor::shared() {
  return platform::Environment::active().shared<FormatMonitor>();
}

std::unique_ptr<FormatMonitor> FormatMonitor::make(platform::Environment& environment) {
  auto& p = environment.platform();
  return std::make_unique<FormatMonitor>(Roles{p.mainLoop, p.background, p.scripts, p.workspace, p.files, p.defaults});
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

void FormatMonitor::setIsoExpectedValue(std::string value) {
  isoExpectedValue_.set(std::move(value));
  defaults_.set(keys::kIsoExpectedValue, isoExpectedValue_.get());
}

void FormatMonitor::setApertureExpectedValue(std::string value) {
  apertureExpectedValue_.set(std::move(value));
  defaults_.set(keys::kApertureExpectedValue, apertureExpectedValue_.get());
}

void FormatMonitor::setShutterExpectedValue(std::string value) {
  shutterExpectedValue_.set(std::move(value));
  defaults_.set(keys::kShutterExpectedValue, shutterExpectedValue_.get());
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
    lastDetectedISO_.set(std::nullopt);
    lastDetectedAperture_.set(std::nullopt);
    lastDetectedShutter_.set(std::nullopt);
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
  lastDetectedISO_.set(reading.iso);
  lastDetectedAperture_.set(reading.aperture);
  lastDetectedShutter_.set(reading.shutter);
  isCameraConnected_.set(true);
  if (reading.available) {
    availableISOs_.set(reading.available->isos);
    availableApertures_.set(reading.available->apertures);
    availableShutters_.set(reading.available->shutters);
  }
  // After the lists, so that a change of camera is judged by what the new one offers.
  if (reading.cameraName) rememberCamera(*reading.cameraName);
  if (alerts_ != nullptr) {
    alerts_->checkAndShowAlerts(reading.format, reading.iso, reading.aperture, reading.shutter);
  }
}

void FormatMonitor::rememberCamera(std::string const& name) {
  if (lastCameraName_ && *lastCameraName_ != name) handleCameraChanged(*lastCameraName_, name);
  cameraName_.set(name);
  lastCameraName_ = name;
}

/// Which cameras they are makes no difference: an expectation that the new one cannot meet is given up.
void FormatMonitor::handleCameraChanged(std::string const& /*from*/, std::string const& /*to*/) {
  if (!contains(availableISOs_.get(), isoExpectedValue_.get())) setIsoExpectedValue("");
  if (!contains(availableApertures_.get(), apertureExpectedValue_.get())) setApertureExpectedValue("");
  if (!contains(availableShutters_.get(), shutterExpectedValue_.get())) setShutterExpectedValue("");
}

void FormatMonitor::clearCameraState() {
  lastDetectedISO_.set(std::nullopt);
  lastDetectedAperture_.set(std::nullopt);
  lastDetectedShutter_.set(std::nullopt);
  isCameraConnected_.set(false);
}

void FormatMonitor::dismissAllAlerts() {
  if (alerts_ != nullptr) alerts_->dismissAllAlerts();
}

}  // namespace morla::camerawatch
