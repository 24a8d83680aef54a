#include "platform/linux/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "platform/linux/FileDescriptor.h"

namespace morla::linux {

FileText readRegularFile(std::string const& path, std::size_t limit) {
  FileDescriptor const file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) return errno == ENOENT ? FileText{} : FileText{std::nullopt, std::strerror(errno)};
  struct stat status{};
  if (fstat(file.get(), &status) != 0) return {std::nullopt, std::strerror(errno)};
  if (!S_ISREG(status.st_mode)) return {std::nullopt, "it is no regular file"};
  std::string text;
  std::array<char, 16384> buffer;
  while (text.size() < limit) {
    auto const count = read(file.get(), buffer.data(), std::min(buffer.size(), limit - text.size()));
    if (count == 0) break;
    if (count < 0 && errno != EINTR) return {std::nullopt, std::strerror(errno)};
    if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return {std::move(text), {}};
}

}  // namespace morla::linux
