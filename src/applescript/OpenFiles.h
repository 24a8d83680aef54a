#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace morla::applescript {

/// The files that a script has opened for access, by the number that it holds for each. They end with the run.
class OpenFiles {
 public:
  struct File {
    std::string path;
    bool isWritable = false;
    std::size_t position = 0;  ///< where the next read or write begins
  };

  /// Nothing when there are too many.
  [[nodiscard]] std::optional<std::int64_t> open(std::string path, bool isWritable);
  /// False when it is not open.
  [[nodiscard]] bool close(std::int64_t number) { return files_.erase(number) > 0; }
  /// The first number under which the file is open; nothing when it is not.
  [[nodiscard]] std::optional<std::int64_t> numberOf(std::string const& path) const;
  /// Null when it is not open.
  [[nodiscard]] File* find(std::int64_t number);

 private:
  static constexpr std::size_t kMost = 100;
  std::map<std::int64_t, File> files_;
  std::int64_t last_ = 0;  ///< numbers are not given twice
};

}  // namespace morla::applescript
