#pragma once

#include <optional>
#include <string>

#include "platform/Workspace.h"

namespace morla::linux {

/// What Contents/Info.plist of the bundle at `bundlePath` says; nothing when there is no such file or it is no property
/// list in XML. Any thread.
[[nodiscard]] std::optional<platform::BundleInformation> readBundle(std::string const& bundlePath);

}  // namespace morla::linux
