#pragma once

#include <string>

#include "view/View.h"

/// What the alerts' banners show: what is expected, and what the camera is set to, in Capture One's own words.
namespace morla::camerawatch {

[[nodiscard]] view::Node FormatAlertView(std::string const& format);
[[nodiscard]] view::Node ISOAlertView(std::string const& detected, std::string const& expected);
[[nodiscard]] view::Node ApertureAlertView(std::string const& detected, std::string const& expected);
[[nodiscard]] view::Node ShutterAlertView(std::string const& detected, std::string const& expected);

}  // namespace morla::camerawatch
