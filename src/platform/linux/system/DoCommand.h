#pragma once

#include <string>
#include <vector>

namespace morla::linux {

/// `morla do ACTION`: asks the running MORLA. `arguments` are those after "do". Returns the exit status: 0; 1 when none
/// runs or the action is not available now; 2 usage.
[[nodiscard]] int doCommand(std::vector<std::string> const& arguments);

/// The lines of the program's help.
[[nodiscard]] std::string doCommandHelp();

}  // namespace morla::linux
