#pragma once

#include <string>
#include <vector>

namespace morla::linux {

/// `morla defaults ...`: looks at the user defaults and changes them, with or without a running MORLA, which sees the
/// change at its next start. `arguments` are those after "defaults". Answers on standard output, complaints on standard
/// error. Returns the exit status: 0; 1 the key is absent, or the file cannot be read or written; 2 usage.
[[nodiscard]] int defaultsCommand(std::vector<std::string> const& arguments);

/// The lines of the program's help.
[[nodiscard]] std::string defaultsCommandHelp();

}  // namespace morla::linux
