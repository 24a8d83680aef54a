#include "platform/linux/system/DesktopEntries.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "platform/linux/RegularFile.h"

namespace morla::linux {
namespace {

/// Larger is no .desktop file.
constexpr std::size_t kFileSizeLimit = 1 << 20;

std::string textOf(std::string const& path) {
  return readRegularFile(path, kFileSizeLimit).text.value_or("");
}

std::string_view trimmed(std::string_view text) {
  auto const first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The escapes of a value: \s \n \t \r \\ .
std::string unescaped(std::string_view value) {
  std::string out;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      out += value[i];
      continue;
    }
    constexpr std::string_view kLetters = "sntr\\";
    constexpr std::string_view kMeanings = " \n\t\r\\";
    auto const letter = kLetters.find(value[++i]);
    if (letter == std::string_view::npos) {
      out += '\\';
      out += value[i];
    } else {
      out += kMeanings[letter];
    }
  }
  return out;
}

std::vector<std::string> listItems(std::string_view value) {
  std::vector<std::string> items;
  while (!value.empty()) {
    auto const end = std::min(value.find(';'), value.size());
    if (end > 0) items.emplace_back(trimmed(value.substr(0, end)));
    value.remove_prefix(std::min(end + 1, value.size()));
  }
  return items;
}

/// The keys of one group of a file in the manner of .desktop files; the first of equal keys counts.
std::map<std::string, std::string, std::less<>> group(std::string_view text, std::string_view name) {
  std::map<std::string, std::string, std::less<>> keys;
  bool isInside = false;
  while (!text.empty()) {
    auto const end = std::min(text.find('\n'), text.size());
    auto const line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('[')) {
      isInside = line.size() == name.size() + 2 && line.substr(1, name.size()) == name && line.ends_with(']');
      continue;
    }
    auto const equals = line.find('=');
    if (!isInside || line.starts_with('#') || equals == std::string_view::npos) continue;
    keys.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
  return keys;
}

bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b) {
  auto const lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  return std::ranges::equal(a, b, {}, lower, lower);
}

long long nanoseconds(std::timespec const& time) {
  return static_cast<long long>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

long long nanosecondsSinceEpoch() {
  std::timespec now{};
  (void)clock_gettime(CLOCK_REALTIME, &now);
  return nanoseconds(now);
}

/// -1 for a folder that is not there.
long long changedAt(std::string const& folder) {
  struct stat status{};
  return stat(folder.c_str(), &status) == 0 ? nanoseconds(status.st_mtim) : -1;
}

/// Well above a tick of the kernel's clock, from which the times of files are taken.
constexpr long long kFileClockStep = 100'000'000;
constexpr long long kNeverEqual = -2;

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text) {
  auto const keys = group(text, "Desktop Entry");
  auto const value = [&](std::string_view key) {
    auto const found = keys.find(key);
    return found == keys.end() ? std::string() : unescaped(found->second);
  };
  if (value("Type") != "Application" || value("Hidden") == "true") return std::nullopt;
  DesktopEntry entry;
  entry.name = keys.contains("Name[fr]") ? value("Name[fr]") : value("Name");
  entry.startupWmClass = value("StartupWMClass");
  entry.exec = value("Exec");
  entry.mimeTypes = listItems(value("MimeType"));
  return entry;
}

DesktopEntries::DesktopEntries(std::vector<std::string> dataFolders, std::vector<std::string> configFolders) {
  for (auto const& folder : configFolders) choiceFiles_.push_back(folder + "/mimeapps.list");
  for (auto const& folder : dataFolders) {
    applicationFolders_.push_back(folder + "/applications");
    choiceFiles_.push_back(folder + "/applications/mimeapps.list");
  }
}

void DesktopEntries::readAgainIfChanged() {
  bool const isCurrent = isRead_ && std::ranges::all_of(fingerprint_, [&](auto const& folder) {
                           return changedAt(folder.first) == folder.second;
                         });
  if (isCurrent) return;
  isRead_ = true;
  entries_.clear();
  fingerprint_.clear();
  // The time is taken before the folder is read, so that what changes meanwhile is seen the next time. The clock of the
  // file system is coarse: a folder that has only just changed may change again without looking newer.
  auto const trustedBefore = nanosecondsSinceEpoch() - kFileClockStep;
  auto const note = [&](std::string const& folder) {
    auto const time = changedAt(folder);
    fingerprint_.emplace_back(folder, time < trustedBefore ? time : kNeverEqual);
  };
  for (auto const& folder : applicationFolders_) readFolder(folder, note);
}

void DesktopEntries::readFolder(std::string const& folder, std::function<void(std::string const&)> const& note) {
  note(folder);
  std::error_code failure;
  std::filesystem::recursive_directory_iterator entry(folder, failure);
  for (; !failure && entry != std::filesystem::recursive_directory_iterator(); entry.increment(failure)) {
    std::error_code ignored;
    if (entry->is_directory(ignored)) {
      note(entry->path().string());
    } else if (entry->path().extension() == ".desktop") {
      readFile(folder, entry->path().string());
    }
  }
}

void DesktopEntries::readFile(std::string const& root, std::string const& path) {
  constexpr std::string_view kExtension = ".desktop";
  std::string identifier = path.substr(root.size() + 1, path.size() - root.size() - 1 - kExtension.size());
  std::ranges::replace(identifier, '/', '-');
  if (entries_.contains(identifier)) return;
  auto entry = parseDesktopEntry(textOf(path));
  if (entry) {
    entry->identifier = identifier;
    entry->path = path;
  }
  entries_.emplace(std::move(identifier), std::move(entry));
}

DesktopEntry const* DesktopEntries::forWindowClass(std::string_view wmClass, std::string_view wmInstance) {
  readAgainIfChanged();
  auto const first = [this](auto const& matches) -> DesktopEntry const* {
    for (auto const& [identifier, entry] : entries_) {
      if (entry && !entry->startupWmClass.empty() && matches(entry->startupWmClass)) return &*entry;
    }
    return nullptr;
  };
  for (auto const name : {wmClass, wmInstance}) {
    if (auto const* entry = first([&](std::string const& wanted) { return wanted == name; })) return entry;
  }
  for (auto const name : {wmClass, wmInstance}) {
    auto const* entry = first([&](std::string const& wanted) { return equalsIgnoringAsciiCase(wanted, name); });
    if (entry != nullptr) return entry;
  }
  return nullptr;
}

DesktopEntry const* DesktopEntries::withIdentifier(std::string const& identifier) {
  readAgainIfChanged();
  auto const found = entries_.find(identifier);
  return found == entries_.end() || !found->second ? nullptr : &*found->second;
}

DesktopEntry const* DesktopEntries::forScheme(std::string_view scheme) {
  readAgainIfChanged();
  auto const mimeType = "x-scheme-handler/" + std::string(scheme);
  if (auto const* chosen = chosenFor(mimeType)) return chosen;
  for (auto const& [identifier, entry] : entries_) {
    if (entry && !entry->exec.empty() && std::ranges::find(entry->mimeTypes, mimeType) != entry->mimeTypes.end()) {
      return &*entry;
    }
  }
  return nullptr;
}

DesktopEntry const* DesktopEntries::chosenFor(std::string const& mimeType) const {
  constexpr std::string_view kExtension = ".desktop";
  for (auto const& file : choiceFiles_) {
    auto const choices = group(textOf(file), "Default Applications");
    auto const found = choices.find(mimeType);
    if (found == choices.end()) continue;
    for (auto const& id : listItems(found->second)) {
      if (!id.ends_with(kExtension)) continue;
      auto const entry = entries_.find(id.substr(0, id.size() - kExtension.size()));
      if (entry != entries_.end() && entry->second && !entry->second->exec.empty()) return &*entry->second;
    }
  }
  return nullptr;
}

}  // namespace morla::linux
