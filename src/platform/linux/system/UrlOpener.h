#pragma once

#include <string>

#include "platform/linux/system/DesktopEntries.h"

namespace morla::linux {

/// Starts the application that the desktop has for the scheme of `url`, and does not wait for it. False when there is
/// none or it cannot be started.
[[nodiscard]] bool openUrlWith(DesktopEntries& entries, std::string const& url);

}  // namespace morla::linux
