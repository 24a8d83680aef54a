#include "camerawatch/WatchedValue.h"

#include <algorithm>
#include <utility>

namespace morla::camerawatch {

WatchedValue::WatchedValue(ValueKind const& kind, Alert::Roles roles)
    : kind_(kind),
      defaults_(roles.defaults),
      alertEnabled_(kind.alertEnabledName, defaults_.boolean(kind.alertEnabledKey).value_or(false)),
      expectedValue_(kind.expectedValueName, defaults_.text(kind.expectedValueKey).value_or("")),
      lastDetected_(kind.lastDetectedName),
      available_(kind.availableName),
      alert_(roles, kind.alertShowingName, kind.positionKey) {}

void WatchedValue::setAlertEnabled(bool value) {
  alertEnabled_.set(value);
  defaults_.set(kind_.alertEnabledKey, value);
}

void WatchedValue::setExpectedValue(std::string value) {
  expectedValue_.set(std::move(value));
  defaults_.set(kind_.expectedValueKey, expectedValue_.get());
}

void WatchedValue::dropUnavailableExpectation() {
  auto const& offered = available_.get();
  if (std::ranges::find(offered, expectedValue_.get()) == offered.end()) setExpectedValue("");
}

void WatchedValue::check(std::string const& detected) {
  auto const& expected = expectedValue_.get();
  if (alertEnabled_.get() && !expected.empty() && detected != expected) {
    showAlert(detected, expected);
  } else {
    dismissAlert();
  }
}

void WatchedValue::showAlert(std::string const& detected, std::string const& expected) {
  alert_.show(kind_.alertView(detected, expected));
}

}  // namespace morla::camerawatch
