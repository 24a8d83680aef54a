#pragma once

#include <filesystem>
#include <string>

namespace morla::support {

/// An empty folder below the system's temporary one, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(TemporaryFolder const&) = delete;
  TemporaryFolder& operator=(TemporaryFolder const&) = delete;

  [[nodiscard]] std::filesystem::path const& path() const { return path_; }
  [[nodiscard]] std::filesystem::path operator/(std::string const& relativePath) const { return path_ / relativePath; }

  /// Writes `text` to the file at `relativePath`, whose folders are made.
  void write(std::string const& relativePath, std::string const& text) const;
  /// Empty when there is no such file.
  [[nodiscard]] std::string read(std::string const& relativePath) const;

 private:
  std::filesystem::path path_;
};

}  // namespace morla::support
