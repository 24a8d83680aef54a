#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morla::platform {

/// Folders and files. Paths are absolute, UTF-8. Any thread.
class Files {
 public:
  virtual ~Files() = default;

  /// The user's home folder, without a slash at its end.
  [[nodiscard]] virtual std::string homeFolder() const = 0;

  /// The names in `folder`, hidden ones left out, in the system's order; nothing when it cannot be listed.
  [[nodiscard]] virtual std::optional<std::vector<std::string>> visibleEntries(std::string const& folder) const = 0;
};

}  // namespace morla::platform
