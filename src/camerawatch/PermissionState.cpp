#include "camerawatch/PermissionState.h"

namespace morla::camerawatch {

std::string_view textOf(PermissionState state) {
  switch (state) {
    case PermissionState::checking:
      return "checking";
    case PermissionState::captureOneMissing:
      return "captureOneMissing";
    case PermissionState::needsPermission:
      return "needsPermission";
    case PermissionState::permissionDenied:
      return "permissionDenied";
    case PermissionState::ready:
      return "ready";
  }
  return "";
}

Json toJson(PermissionState state) {
  return Json(textOf(state));
}

}  // namespace morla::camerawatch
