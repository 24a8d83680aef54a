#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morla::privacy {

enum class Permission { undecided, allow, deny };

/// What one program asks to be allowed.
struct PermissionQuestion {
  enum class Service { automation, screenRecording, accessibility };
  Service service = Service::automation;
  std::string client;  ///< identifier of the program that asks
  std::string target;  ///< identifier of the application to be controlled; automation only

  friend bool operator==(PermissionQuestion const&, PermissionQuestion const&) = default;
};

/// The user's decisions about what programs may do, one file for the whole desktop:
///
///     {"automation": {CLIENT: {TARGET: "allow"|"deny"|"undecided"}},
///      "screenRecording": {CLIENT: …}, "accessibility": {CLIENT: …}}
///
/// Read anew at every question, since other programs write it. Readers need no lock, because the file is only ever
/// replaced whole; a writer holds one beside it. Any thread.
class PermissionStore {
 public:
  struct Decision {
    PermissionQuestion question;
    Permission permission = Permission::undecided;
  };
  struct Contents {
    std::vector<Decision> decisions;
    std::string problem;  ///< one line on what cannot be read or understood; empty when all is, or there is no file
  };

  explicit PermissionStore(std::string path) : path_(std::move(path)) {}
  /// $XDG_DATA_HOME/privacy/permissions.json
  [[nodiscard]] static PermissionStore ofUser();

  /// Undecided also when the file is absent or cannot be understood.
  [[nodiscard]] Permission get(PermissionQuestion const& question) const;

  /// Every decision that is there.
  [[nodiscard]] Contents read() const;

  /// Changes one decision and keeps the others, whoever else writes at the same time. Nothing on success, else why it
  /// failed, in one line; the file is then as it was. Waits for another writer, but for a second at most. A file that
  /// cannot be understood is not lost: it is kept beside the new one, as permissions.json.broken-DATE.
  [[nodiscard]] std::optional<std::string> set(PermissionQuestion const& question, Permission permission) const;

  [[nodiscard]] std::string const& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace morla::privacy
