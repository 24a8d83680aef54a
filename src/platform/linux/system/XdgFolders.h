#pragma once

#include <string>
#include <vector>

/// Where the desktop's conventions put files. Absolute paths without a slash at the end; a variable that is unset,
/// empty or relative counts as its default. Any thread that does not change the environment.
namespace morla::linux {

[[nodiscard]] std::string homeFolder();
[[nodiscard]] std::string configHome();
[[nodiscard]] std::string dataHome();
/// Most important first.
[[nodiscard]] std::vector<std::string> configFolders();
[[nodiscard]] std::vector<std::string> dataFolders();

}  // namespace morla::linux
