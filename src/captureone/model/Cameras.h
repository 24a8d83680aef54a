#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "captureone/model/Changes.h"

namespace morla::captureone {

enum class CameraSetting { format, iso, aperture, shutterSpeed };
inline constexpr std::array kCameraSettings{CameraSetting::format, CameraSetting::iso, CameraSetting::aperture,
                                            CameraSetting::shutterSpeed};

enum class CameraLink { connected, disconnected };
enum class CameraPower { on, off };

/// Values are free text: bodies differ in what they write ("f/8", "8", "Hi 1").
struct SettingState {
  std::string value;
  std::string available;  ///< what the body offers, joined by `|`

  friend bool operator==(SettingState const&, SettingState const&) = default;
};

struct Camera {
  std::string identifier;
  std::string name;
  CameraLink link = CameraLink::connected;
  CameraPower power = CameraPower::on;
  std::array<SettingState, kCameraSettings.size()> settings;

  [[nodiscard]] SettingState const& setting(CameraSetting which) const {
    return settings[static_cast<std::size_t>(which)];
  }
  /// The values offered, without empty ones.
  [[nodiscard]] std::vector<std::string> offered(CameraSetting which) const;

  friend bool operator==(Camera const&, Camera const&) = default;
};

/// The bodies on the cable, one of them selected as long as there is one.
///
/// A body can be missing in three ways, and scripts see each of them differently: none is plugged in (`camera` is
/// missing value), its link has gone (whatever is asked of it fails), it is switched off (it offers nothing).
class Cameras {
 public:
  explicit Cameras(Changes& changes);

  [[nodiscard]] static std::size_t maximum();

  [[nodiscard]] std::vector<Camera> const& all() const { return cameras_; }
  [[nodiscard]] Camera const* find(std::string_view identifier) const;
  /// Null when no body is plugged in.
  [[nodiscard]] Camera const* current() const;
  [[nodiscard]] std::size_t currentIndex() const { return current_; }

  /// Plugs in bodies that are as they come from the shop, or takes the last ones away. False above the maximum.
  bool setCount(std::size_t count);
  /// False: no such body.
  bool makeCurrent(std::size_t index);

  /// These change the current body; false when there is none.
  bool setLink(CameraLink link);
  bool setPower(CameraPower power);
  bool setName(std::string name);
  bool setValue(CameraSetting which, std::string value);
  bool setAvailable(CameraSetting which, std::string joined);

  /// As a script does it: false when there is no such body, when it is off or gone, or when it does not offer the
  /// value.
  bool dial(std::string_view identifier, CameraSetting which, std::string value);

  void reset();

 private:
  template <typename T>
  bool assign(T& place, T value);

  Changes& changes_;
  std::vector<Camera> cameras_;
  std::size_t current_ = 0;
};

/// The pieces of a list joined by `|`, without empty ones, in order.
[[nodiscard]] std::vector<std::string> splitOffer(std::string_view joined);

}  // namespace morla::captureone
