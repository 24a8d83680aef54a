#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/UserDefaults.h"

namespace morla::linux {

/// The file that holds the user defaults, shared by every process that runs MORLA or its commands.
///
/// Readers need no lock, because the file is only ever replaced whole. A writer holds a lock beside it, reads it again,
/// changes its own keys and replaces it, so that two writers lose nothing of each other's. What it does not understand
/// (foreign types, keys of other versions) stays as it is. There is no fsync: a kill leaves the old file or the new
/// one, and the worst that a power failure can leave is a damaged file, which is survived.
class DefaultsFile {
 public:
  using Values = std::map<std::string, platform::DefaultsValue, std::less<>>;

  struct Read {
    Values values;
    std::string problem;  ///< one line on what could not be read; empty when the file is whole, or absent
  };

  /// What one write does: a key with nothing is taken out.
  using Changes = std::map<std::string, std::optional<platform::DefaultsValue>, std::less<>>;

  explicit DefaultsFile(std::string path) : path_(std::move(path)) {}

  /// `$XDG_CONFIG_HOME/morla/defaults.json`
  [[nodiscard]] static std::string usualPath();

  [[nodiscard]] std::string const& path() const { return path_; }
  [[nodiscard]] Read read() const;

  enum class Outcome {
    written,
    busy,  ///< another process holds the lock
    failed,
  };
  struct Change {
    Outcome outcome = Outcome::written;
    std::string problem;  ///< one line on why it was not written; the file is then as it was
    friend bool operator==(Change const&, Change const&) = default;
  };

  /// Waits for the lock at most for `patience`; zero takes it at once or not at all. `fallback` has the values that a
  /// damaged file no longer holds but that the caller still knows.
  [[nodiscard]] Change change(Changes const& changes, std::chrono::milliseconds patience,
                              Values const& fallback = {}) const;

 private:
  [[nodiscard]] Change changeUnderLock(Changes const& changes, Values const& fallback) const;

  std::string path_;
};

}  // namespace morla::linux
