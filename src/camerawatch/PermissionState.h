#pragma once

#include <string_view>

#include "base/Json.h"

namespace morla::camerawatch {

/// Whether scripts may be sent to Capture One, as the user is told; in the order of the way there.
enum class PermissionState {
  checking,           ///< a check is under way; also the state at start-up
  captureOneMissing,  ///< neither running nor installed
  needsPermission,    ///< no answer, and no refusal is remembered: the user has not decided yet
  permissionDenied,   ///< refused, now or earlier
  ready,              ///< the probe answered
};

[[nodiscard]] std::string_view textOf(PermissionState state);
[[nodiscard]] Json toJson(PermissionState state);

}  // namespace morla::camerawatch
