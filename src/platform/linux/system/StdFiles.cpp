#include "platform/linux/system/StdFiles.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/system/XdgFolders.h"

namespace morla::linux {

std::string StdFiles::homeFolder() const {
  return linux::homeFolder();
}

std::optional<std::vector<std::string>> StdFiles::visibleEntries(std::string const& folder) const {
  std::error_code failure;
  std::filesystem::directory_iterator entry(folder, failure);
  std::vector<std::string> names;
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    auto name = entry->path().filename().string();
    if (!name.starts_with('.')) names.push_back(std::move(name));
  }
  if (failure) return std::nullopt;
  return names;
}

}  // namespace morla::linux
