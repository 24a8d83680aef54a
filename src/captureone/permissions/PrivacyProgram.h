#pragma once

#include <string>

namespace morla::captureone {

/// Shows the privacy settings on the page of `address` until the window is closed, or hands the address to the process
/// that shows them already. The exit status; a failure is told on standard error.
[[nodiscard]] int runPrivacy(std::string const& address);

}  // namespace morla::captureone
