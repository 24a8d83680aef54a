#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Published.h"
#include "camerawatch/Alert.h"
#include "platform/UserDefaults.h"
#include "view/View.h"

namespace morla::camerawatch {

/// What distinguishes one watched value from another. All texts are literals.
struct ValueKind {
  // How the trace calls the published values.
  std::string_view alertEnabledName;
  std::string_view expectedValueName;
  std::string_view lastDetectedName;
  std::string_view availableName;
  std::string_view alertShowingName;
  // Where they are stored.
  std::string_view alertEnabledKey;
  std::string_view expectedValueKey;
  std::string_view positionKey;
  view::Node (*alertView)(std::string const& detected, std::string const& expected);
};

/// A setting of the camera that the user may hold to one value: what it is, what it could be, what it is expected to
/// be, and the alert that says when it is not. Texts are Capture One's own and compared exactly. Main thread.
class WatchedValue {
 public:
  WatchedValue(ValueKind const& kind, Alert::Roles roles);

  [[nodiscard]] Published<bool> const& alertEnabled() const { return alertEnabled_; }
  [[nodiscard]] Published<std::string> const& expectedValue() const { return expectedValue_; }
  [[nodiscard]] Published<std::optional<std::string>> const& lastDetected() const { return lastDetected_; }
  [[nodiscard]] Published<std::vector<std::string>> const& available() const { return available_; }
  [[nodiscard]] Alert const& alert() const { return alert_; }

  /// Stored on every write.
  void setAlertEnabled(bool value);
  void setExpectedValue(std::string value);
  void setLastDetected(std::optional<std::string> value) { lastDetected_.set(std::move(value)); }
  void setAvailable(std::vector<std::string> values) { available_.set(std::move(values)); }

  /// An expectation that the camera does not offer is given up.
  void dropUnavailableExpectation();
  /// Shows the alert when its switch is on and `detected` is not what is expected; an empty expectation expects
  /// nothing.
  void check(std::string const& detected);
  void showAlert(std::string const& detected, std::string const& expected);
  void dismissAlert() { alert_.dismiss(); }

 private:
  ValueKind const& kind_;
  platform::UserDefaults& defaults_;
  Published<bool> alertEnabled_;
  Published<std::string> expectedValue_;
  Published<std::optional<std::string>> lastDetected_;
  Published<std::vector<std::string>> available_;
  Alert alert_;
};

}  // namespace morla::camerawatch
