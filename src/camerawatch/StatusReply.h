#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace morla::camerawatch {

/// Words that stand where a format would; the first is this program's own, the others are the status script's.
namespace status {
inline constexpr std::string_view kNotRunning = "NOT_RUNNING";
inline constexpr std::string_view kCameraOff = "CAMERA_OFF";
inline constexpr std::string_view kNoCamera = "NO_CAMERA";
inline constexpr std::string_view kNoDocument = "NO_DOCUMENT";
inline constexpr std::string_view kError = "ERROR";
}  // namespace status

/// The values that a camera offers, in its own order.
struct AvailableValues {
  std::vector<std::string> isos;
  std::vector<std::string> apertures;
  std::vector<std::string> shutters;
  friend bool operator==(AvailableValues const&, AvailableValues const&) = default;
};

/// What the camera is set to. Texts are Capture One's own, never trimmed or read as numbers.
struct CameraReading {
  std::string format;
  std::string iso;
  std::string aperture;
  std::string shutter;
  std::optional<AvailableValues> available;  ///< only in replies of at least seven fields
  std::optional<std::string> cameraName;     ///< only in replies of at least eight fields
  friend bool operator==(CameraReading const&, CameraReading const&) = default;
};

/// There is no reading; `text` is shown in the format's place: a status word, or a reply that nobody can read.
struct NoReading {
  std::string text;
  friend bool operator==(NoReading const&, NoReading const&) = default;
};

using StatusReply = std::variant<CameraReading, NoReading>;

/// The items of one list field, in order, duplicates kept, empty pieces dropped.
[[nodiscard]] std::vector<std::string> parseAvailableValues(std::string_view field);

/// Takes the reply of the status script apart: fields are separated by "||", the items of a list by "|".
[[nodiscard]] StatusReply parseStatusReply(std::string_view reply);

}  // namespace morla::camerawatch
