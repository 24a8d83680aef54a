#pragma once

#include <optional>
#include <string>
#include <utility>

namespace morla::privacy {

enum class Permission { undecided, allow, deny };

/// What one program asks to be allowed.
struct PermissionQuestion {
  enum class Service { automation, screenRecording, accessibility };
  Service service = Service::automation;
  std::string client;  ///< identifier of the program that asks
  std::string target;  ///< identifier of the application to be controlled; automation only
};

/// The user's decisions about what programs may do, one file for the whole desktop:
///
///     {"automation": {CLIENT: {TARGET: "allow"|"deny"|"undecided"}},
///      "screenRecording": {CLIENT: …}, "accessibility": {CLIENT: …}}
///
/// Read anew at every question, since other programs write it. Any thread.
class PermissionStore {
 public:
  explicit PermissionStore(std::string path) : path_(std::move(path)) {}
  /// $XDG_DATA_HOME/privacy/permissions.json
  [[nodiscard]] static PermissionStore ofUser();

  /// Undecided also when the file is absent or cannot be understood.
  [[nodiscard]] Permission get(PermissionQuestion const& question) const;

  /// Changes one decision and keeps the others, whoever else writes at the same time; a reader sees the old file or the
  /// new one. False when the file cannot be written.
  [[nodiscard]] bool set(PermissionQuestion const& question, Permission permission) const;

  [[nodiscard]] std::string const& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace morla::privacy
