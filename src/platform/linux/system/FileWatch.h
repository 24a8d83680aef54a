#pragma once

#include <functional>
#include <string>

#include "base/Subscription.h"

namespace morla::linux {

/// Calls `changed` after the file at `path` was written or replaced, until the subscription ends; also now and then
/// when nothing in it is different. Its folder is made if need be. Main thread, which must run Qt's event loop; where
/// the system cannot watch, nothing is ever told.
[[nodiscard]] Subscription watchFile(std::string const& path, std::function<void()> changed);

}  // namespace morla::linux
