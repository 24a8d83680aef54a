// The part of the camera watch that finds out whether the user lets this program talk to Capture One.

#include <chrono>
#include <string_view>
#include <utility>

#include "camerawatch/FormatMonitor.h"
#include "camerawatch/ScriptTexts.h"
#include "camerawatch/SettingsKeys.h"

namespace morla::camerawatch {
namespace {

constexpr std::string_view kAutomationSettingsUrl =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation";
/// The settings application under its present and its former identifier.
constexpr std::string_view kSettingsIdentifiers[] = {"com.apple.systempreferences", "com.apple.Preferences"};
/// Time for the settings application to appear among the running ones after its page was opened.
constexpr Duration kSettingsLaunchTime = std::chrono::milliseconds(300);

}  // namespace

Task<> FormatMonitor::checkAndStartIfNeeded() {
  co_await checkPermissionState();
}

Task<> FormatMonitor::checkPermissionState() {
  auto const alive = life_.reference();
  permissionState_.set(PermissionState::checking);
  if (isCaptureOneMissing()) {
    permissionState_.set(PermissionState::captureOneMissing);
    co_return;
  }
  auto const reply = co_await runProbe();
  if (!alive) co_return;

  if (reply.error && reply.error->number == platform::kErrorNotPermitted) {
    defaults_.set(keys::kAutomationPermissionDenied, true);
    denyPermission();
  } else if (reply.text) {
    defaults_.set(keys::kAutomationPermissionDenied, false);
    permissionState_.set(PermissionState::ready);
    if (isEnabled_.get()) startMonitoring();
  } else if (defaults_.boolean(keys::kAutomationPermissionDenied).value_or(false)) {
    denyPermission();
  } else {
    permissionState_.set(PermissionState::needsPermission);
  }
}

Task<bool> FormatMonitor::requestPermission() {
  auto const alive = life_.reference();
  if (isCaptureOneMissing()) {
    permissionState_.set(PermissionState::captureOneMissing);
    co_return false;
  }
  workspace_.activateSelf();
  auto const reply = co_await runProbe();
  if (!alive) co_return false;

  if (reply.error && reply.error->number == platform::kErrorNotPermitted) {
    defaults_.set(keys::kAutomationPermissionDenied, true);
    permissionState_.set(PermissionState::permissionDenied);
    co_return false;
  }
  if (!reply.text) co_return false;
  defaults_.set(keys::kAutomationPermissionDenied, false);
  permissionState_.set(PermissionState::ready);
  co_return true;
}

void FormatMonitor::openAutomationSettings() {
  workspace_.openUrl(std::string(kAutomationSettingsUrl));
  detach(activateSystemSettingsSoon());
}

Task<> FormatMonitor::activateSystemSettingsSoon() {
  auto const alive = life_.reference();
  CancellationSource const neverCancelled;
  co_await sleepFor(loop_, kSettingsLaunchTime, neverCancelled.token());
  if (!alive) co_return;
  auto const running = workspace_.runningApplications();
  for (auto const identifier : kSettingsIdentifiers) {
    for (auto const& application : running) {
      if (application.bundleIdentifier != identifier) continue;
      workspace_.activate(application);
      co_return;
    }
  }
}

Task<platform::ScriptReply> FormatMonitor::runAppleScriptWithError(platform::ScriptKind kind, std::string source) {
  return scripts_.run(kind, std::move(source));
}

Task<platform::ScriptReply> FormatMonitor::runProbe() {
  return runAppleScriptWithError(platform::ScriptKind::probe,
                                 "tell " + bridge_.appleScriptTarget() + std::string(scripts::kProbe));
}

bool FormatMonitor::isCaptureOneMissing() const {
  return !bridge_.captureOneRunningApp() && !bridge_.preferredCaptureOneApp();
}

void FormatMonitor::denyPermission() {
  permissionState_.set(PermissionState::permissionDenied);
  if (!isEnabled_.get()) return;
  stopMonitoring();
  dismissAllAlerts();
}

}  // namespace morla::camerawatch
