#include "platform/linux/system/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace morla::linux {
namespace {

std::string withoutTrailingSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string folderFrom(char const* variable, std::string fallback) {
  char const* value = std::getenv(variable);
  return withoutTrailingSlash(value != nullptr && value[0] == '/' ? value : std::move(fallback));
}

std::vector<std::string> withSystemFolders(std::string first, char const* variable, std::string_view fallback) {
  char const* value = std::getenv(variable);
  std::string_view rest = value != nullptr && value[0] != '\0' ? std::string_view(value) : fallback;
  std::vector<std::string> folders{std::move(first)};
  while (!rest.empty()) {
    auto const end = rest.find(':');
    auto const folder = rest.substr(0, end);
    if (folder.starts_with('/')) folders.push_back(withoutTrailingSlash(std::string(folder)));
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return folders;
}

}  // namespace

std::string homeFolder() {
  auto const* entry = std::getenv("HOME") == nullptr ? getpwuid(getuid()) : nullptr;
  return folderFrom("HOME", entry != nullptr ? entry->pw_dir : "/");
}

std::string configHome() {
  return folderFrom("XDG_CONFIG_HOME", homeFolder() + "/.config");
}

std::string dataHome() {
  return folderFrom("XDG_DATA_HOME", homeFolder() + "/.local/share");
}

std::vector<std::string> configFolders() {
  return withSystemFolders(configHome(), "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<std::string> dataFolders() {
  return withSystemFolders(dataHome(), "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

}  // namespace morla::linux
