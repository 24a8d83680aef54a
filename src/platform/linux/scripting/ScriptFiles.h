#pragma once

#include "applescript/Host.h"

namespace morla::linux {

/// The machine's own files, with the rights of this process. Only regular files are read and written. Any thread.
class ScriptFiles final : public applescript::HostFiles {
 public:
  [[nodiscard]] std::optional<Information> information(std::string const& path) override;
  [[nodiscard]] Bytes read(std::string const& path, std::size_t offset, std::size_t count) override;
  [[nodiscard]] std::int64_t write(std::string const& path, std::size_t offset, std::string const& bytes) override;
  [[nodiscard]] std::int64_t resize(std::string const& path, std::size_t size) override;
  [[nodiscard]] std::optional<std::vector<std::string>> namesIn(std::string const& folder) override;
};

}  // namespace morla::linux
