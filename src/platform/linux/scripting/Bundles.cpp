#include "platform/linux/scripting/Bundles.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "base/unicode/Unicode.h"
#include "platform/linux/RegularFile.h"
#include "platform/linux/scripting/InfoPlist.h"

namespace morla::linux {

static constexpr std::string_view kSuffix = ".app";

static bool hasSuffix(std::string_view name) {
  return name.size() > kSuffix.size() &&
         unicode::equalsIgnoringCase(name.substr(name.size() - kSuffix.size()), kSuffix);
}

static std::string_view withoutSuffix(std::string_view name) {
  return hasSuffix(name) ? name.substr(0, name.size() - kSuffix.size()) : name;
}

/// The bundles directly in `folder`, by name: what comes first must not depend on the file system.
static std::vector<std::string> bundlePathsIn(std::string const& folder) {
  std::vector<std::string> paths;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (hasSuffix(entry->path().filename().string())) paths.push_back(entry->path().string());
  }
  std::ranges::sort(paths);
  return paths;
}

template <typename Fits>
static std::optional<InstalledBundle> find(std::vector<std::string> const& folders, Fits const& fits) {
  for (auto const& folder : folders) {
    for (auto const& path : bundlePathsIn(folder)) {
      auto const information = readBundle(path);
      if (!information || !information->identifier || information->identifier->empty()) continue;
      std::string const fileName = std::filesystem::path(path).filename().string();
      InstalledBundle bundle{path, information->name.value_or(std::string(withoutSuffix(fileName))),
                             *information->identifier};
      if (fits(bundle, withoutSuffix(fileName))) return bundle;
    }
  }
  return std::nullopt;
}

Bundles Bundles::installed() {
  std::vector<std::string> folders{"/Applications"};
  if (char const* const home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    folders.push_back(std::string(home) + "/Applications");
  }
  return Bundles(std::move(folders));
}

std::optional<InstalledBundle> Bundles::named(std::string const& name) const {
  auto const wanted = withoutSuffix(name);
  return find(folders_, [wanted](InstalledBundle const& bundle, std::string_view fileName) {
    return unicode::equalsIgnoringCase(bundle.name, wanted) || unicode::equalsIgnoringCase(fileName, wanted);
  });
}

std::optional<InstalledBundle> Bundles::identifiedBy(std::string const& identifier) const {
  return find(folders_, [&](InstalledBundle const& bundle, std::string_view) {
    return unicode::equalsIgnoringCase(bundle.identifier, identifier);
  });
}

std::optional<std::string> Bundles::dictionaryOf(InstalledBundle const& bundle) {
  return readRegularFile(bundle.path + "/Contents/Resources/dictionary.tsv").text;
}

}  // namespace morla::linux
