#pragma once

#include <string>

#include "platform/UserDefaults.h"
#include "platform/linux/system/DefaultsFile.h"

namespace morla::linux {

/// The user defaults of a running program: read once, written through at every change.
///
/// What other processes write while this one runs is kept in the file and seen at the next start. What could not be
/// written holds for this run and is tried again with the next write.
class FileUserDefaults final : public platform::UserDefaults {
 public:
  explicit FileUserDefaults(std::string path = DefaultsFile::usualPath());

  [[nodiscard]] std::optional<platform::DefaultsValue> value(std::string_view key) const override;

 protected:
  void store(std::vector<platform::DefaultsEntry> const& entries) override;

 private:
  DefaultsFile file_;
  DefaultsFile::Values values_;
  DefaultsFile::Changes unsaved_;
  std::string lastProblem_;  ///< so that a folder that stays read-only fills no log
};

}  // namespace morla::linux
