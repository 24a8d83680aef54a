#include "applescript/OpenFiles.h"

#include <utility>

namespace morla::applescript {

std::optional<std::int64_t> OpenFiles::open(std::string path, bool isWritable) {
  if (files_.size() >= kMost) return std::nullopt;
  files_[++last_] = {std::move(path), isWritable, 0};
  return last_;
}

std::optional<std::int64_t> OpenFiles::numberOf(std::string const& path) const {
  for (auto const& [number, file] : files_) {
    if (file.path == path) return number;
  }
  return std::nullopt;
}

OpenFiles::File* OpenFiles::find(std::int64_t number) {
  auto const found = files_.find(number);
  return found == files_.end() ? nullptr : &found->second;
}

}  // namespace morla::applescript
