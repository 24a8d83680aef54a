#include "camerawatch/AlerteStatus.h"

#include <algorithm>
#include <array>
#include <utility>

#include "camerawatch/StatusReply.h"

namespace morla::camerawatch {
namespace {

using view::SystemColour;

std::ptrdiff_t alertsShowing(FormatMonitor const& monitor) {
  std::array const flags{monitor.isAlertShowing().get(), monitor.isIsoAlertShowing().get(),
                         monitor.isApertureAlertShowing().get(), monitor.isShutterAlertShowing().get()};
  return std::ranges::count(flags, true);
}

}  // namespace

std::string statusText(FormatMonitor const& monitor) {
  if (auto const count = alertsShowing(monitor); count > 0) {
    std::string const plural = count == 1 ? "" : "s";
    return std::to_string(count) + " alerte" + plural + " active" + plural;
  }
  constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kWords{{
      {status::kNotRunning, "Capture One non lancé"},
      {status::kNoCamera, "Pas de caméra connectée"},
      {status::kNoDocument, "Pas de document ouvert"},
      {status::kCameraOff, "Boîtier éteint ou déconnecté"},
      {status::kError, "Erreur de communication"},
  }};
  for (auto const& [word, text] : kWords) {
    if (monitor.lastDetectedFormat().get() == word) return std::string(text);
  }
  bool const isAnythingOn = monitor.isEnabled().get() || monitor.isoAlertEnabled().get() ||
                            monitor.apertureAlertEnabled().get() || monitor.shutterAlertEnabled().get();
  return isAnythingOn ? "Surveillance active" : "Aucune alerte activée";
}

SystemColour statusColor(FormatMonitor const& monitor) {
  if (alertsShowing(monitor) > 0) return SystemColour::red;
  auto const& format = monitor.lastDetectedFormat().get();
  if (format == status::kCameraOff) return SystemColour::orange;
  if (format == status::kNoCamera || format == status::kNoDocument || format == status::kNotRunning) {
    return SystemColour::grey;
  }
  return SystemColour::green;
}

}  // namespace morla::camerawatch
