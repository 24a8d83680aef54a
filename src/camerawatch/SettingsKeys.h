#pragma once

#include <string_view>

/// The keys of the user defaults that the camera watch owns.
namespace morla::camerawatch::keys {

inline constexpr std::string_view kFormatMonitorEnabled = "formatMonitorEnabled";              ///< boolean, false
inline constexpr std::string_view kAutomationPermissionDenied = "automationPermissionDenied";  ///< boolean, false
inline constexpr std::string_view kIsoAlertEnabled = "isoAlertEnabled";                        ///< boolean, false
inline constexpr std::string_view kApertureAlertEnabled = "apertureAlertEnabled";              ///< boolean, false
inline constexpr std::string_view kShutterAlertEnabled = "shutterAlertEnabled";                ///< boolean, false
inline constexpr std::string_view kIsoExpectedValue = "isoExpectedValue";                      ///< text, ""
inline constexpr std::string_view kApertureExpectedValue = "apertureExpectedValue";            ///< text, ""
inline constexpr std::string_view kShutterExpectedValue = "shutterExpectedValue";              ///< text, ""

/// Each followed by X or Y: number, the origin of the alert's panel; absent, the panel is centred.
inline constexpr std::string_view kFormatAlert = "formatAlert";
inline constexpr std::string_view kIsoAlert = "isoAlert";
inline constexpr std::string_view kApertureAlert = "apertureAlert";
inline constexpr std::string_view kShutterAlert = "shutterAlert";

}  // namespace morla::camerawatch::keys
