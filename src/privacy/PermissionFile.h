#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace morla::privacy {

/// A small file that several programs share: replaced whole, by one writer at a time. Errors are errno values, 0 is
/// none. Any thread.
class PermissionFile {
 public:
  struct Text {
    std::optional<std::string> text;  ///< none: there is no file, or `error` is not 0
    int error = 0;
  };
  [[nodiscard]] static Text read(std::string const& path);

  /// Makes the folder and waits, at most for `patience`, until no other writer has the file, to the end of this object.
  PermissionFile(std::string const& path, std::chrono::milliseconds patience);
  ~PermissionFile();
  PermissionFile(PermissionFile const&) = delete;
  PermissionFile& operator=(PermissionFile const&) = delete;

  /// What kept this object from being the one writer; it must not be used then. EWOULDBLOCK: another one has the file.
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] Text read() const { return read(target_); }
  /// Keeps a copy of the file under another name, once.
  [[nodiscard]] int keepAside() const;
  /// Leaves the old file or the new one, and nothing else.
  [[nodiscard]] int replace(std::string_view text) const;

 private:
  [[nodiscard]] int takeLock(std::string const& path, std::chrono::milliseconds patience);

  std::string target_;
  int lock_ = -1;
  int error_ = 0;
};

}  // namespace morla::privacy
