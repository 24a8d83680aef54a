#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morla::linux {

/// What an application's .desktop file says, as far as this program asks.
struct DesktopEntry {
  std::string identifier;  ///< the file's id without ".desktop"
  std::string name;        ///< in French where the file has it
  std::string startupWmClass;
  std::string exec;
  std::string path;                    ///< of the file
  std::vector<std::string> mimeTypes;  ///< also "x-scheme-handler/SCHEME"
};

/// Nothing when `text` describes no application that may be started or shown. `identifier` and `path` are left empty.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

/// The applications that the desktop knows, from the "applications" folders of the data folders; a file in a more
/// important folder hides those of the same id. Read on first use and again when a folder has changed.
class DesktopEntries {
 public:
  /// `dataFolders`: most important first. `configFolders` may hold a mimeapps.list with the user's choices.
  DesktopEntries(std::vector<std::string> dataFolders, std::vector<std::string> configFolders);

  /// The application whose windows have this class. An exact match goes before one that ignores ASCII case, the class
  /// before the instance.
  [[nodiscard]] DesktopEntry const* forWindowClass(std::string_view wmClass, std::string_view wmInstance);

  /// The application of this id, which for one that is spoken to over the bus is its bus name.
  [[nodiscard]] DesktopEntry const* withIdentifier(std::string const& identifier);

  /// The application that opens addresses of `scheme` (lower case): the user's choice, else the first by id.
  [[nodiscard]] DesktopEntry const* forScheme(std::string_view scheme);

 private:
  /// What tells that a folder has other entries than before: its path and the time of its last change.
  using Fingerprint = std::vector<std::pair<std::string, long long>>;

  void readAgainIfChanged();
  void readFolder(std::string const& folder, std::function<void(std::string const&)> const& note);
  void readFile(std::string const& root, std::string const& path);
  [[nodiscard]] DesktopEntry const* chosenFor(std::string const& mimeType) const;

  std::vector<std::string> applicationFolders_;
  std::vector<std::string> choiceFiles_;
  std::map<std::string, std::optional<DesktopEntry>> entries_;  ///< by id; nothing for a hidden one
  Fingerprint fingerprint_;
  bool isRead_ = false;
};

}  // namespace morla::linux
