#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Workspace.h"

namespace morla::linux {

/// What Contents/Info.plist of the bundle at `bundlePath` says; nothing when there is no such file or it is no property
/// list in XML. Any thread.
[[nodiscard]] std::optional<platform::BundleInformation> readBundle(std::string const& bundlePath);

/// The same of the text of such a file.
[[nodiscard]] std::optional<platform::BundleInformation> readInfoPlist(std::string_view text);

}  // namespace morla::linux
