#pragma once

#include <string_view>

/// The keys of the user defaults that the camera watch owns.
namespace morla::camerawatch::keys {

inline constexpr std::string_view kFormatMonitorEnabled = "formatMonitorEnabled";              ///< boolean, false
inline constexpr std::string_view kAutomationPermissionDenied = "automationPermissionDenied";  ///< boolean, false
inline constexpr std::string_view kIsoExpectedValue = "isoExpectedValue";                      ///< text, ""
inline constexpr std::string_view kApertureExpectedValue = "apertureExpectedValue";            ///< text, ""
inline constexpr std::string_view kShutterExpectedValue = "shutterExpectedValue";              ///< text, ""

}  // namespace morla::camerawatch::keys
