#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morla::linux {

struct DesktopEntry;

/// The command that a .desktop file's Exec line stands for when it is to open `url`; the first word is the program.
/// Empty when the line cannot be understood.
[[nodiscard]] std::vector<std::string> commandFor(DesktopEntry const& entry, std::string const& url);

}  // namespace morla::linux
