#pragma once

#include "platform/Application.h"

namespace morla::linux {

/// The identifier under which this program is known on the desktop; the same as on every other system.
inline constexpr char kOwnIdentifier[] = "app.morla.MORLA";
inline constexpr char kOwnName[] = "MORLA";

/// What the build says about this program: there is no bundle here.
class LinuxOwnBundle final : public platform::OwnBundle {
 public:
  [[nodiscard]] std::optional<std::string> identifier() const override { return kOwnIdentifier; }
  [[nodiscard]] std::string shortVersion() const override;
};

}  // namespace morla::linux
