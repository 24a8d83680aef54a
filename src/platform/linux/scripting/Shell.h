#pragma once

#include <string>

#include "applescript/Host.h"

namespace morla::linux {

/// Runs `command` with /bin/sh and waits until it has ended and both its outputs are closed. PATH is
/// /usr/bin:/bin:/usr/sbin:/sbin, whatever ours is; standard input is empty; the rest of the environment is ours. The
/// status of a command that a signal ended is 128 and its number; when there is no shell, 127. Any thread.
[[nodiscard]] applescript::ShellResult runShell(std::string const& command);

}  // namespace morla::linux
