#pragma once

#include <chrono>
#include <string>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "platform/UserDefaults.h"
#include "platform/linux/system/DefaultsFile.h"

namespace morla::linux {

/// The user defaults of a running program: read once, written through at every change.
///
/// What other processes write while this one runs is kept in the file and seen at the next start. What could not be
/// written holds for this run. When another process has the file locked, nobody waits for it: the loop tries again,
/// soon at first and once a second in the end. After any other failure the next write tries again, and `finish`.
class FileUserDefaults final : public platform::UserDefaults {
 public:
  explicit FileUserDefaults(MainLoop& loop, std::string path = DefaultsFile::usualPath());

  [[nodiscard]] std::optional<platform::DefaultsValue> value(std::string_view key) const override;

  /// For the end of the program, where no later turn will come: writes what is not written yet and waits for whoever
  /// has the file locked, but at most for `patience`. Main thread.
  void finish(std::chrono::milliseconds patience);

 protected:
  void store(std::vector<platform::DefaultsEntry> const& entries) override;

 private:
  void save();
  void saveLater();
  void tell(std::string const& problem);

  MainLoop& loop_;
  DefaultsFile file_;
  DefaultsFile::Values values_;
  DefaultsFile::Changes unsaved_;
  std::string lastProblem_;  ///< so that a folder that stays read-only fills no log
  Duration retryDelay_{};    ///< of the latest retry; zero when the latest write was not held up
  Subscription retry_;
  Lifetime life_;
};

}  // namespace morla::linux
