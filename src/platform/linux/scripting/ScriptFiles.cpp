#include "platform/linux/scripting/ScriptFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>

#include "platform/linux/FileDescriptor.h"

namespace morla::linux {

namespace {

/// The error of the file commands that comes nearest to errno's.
[[nodiscard]] std::int64_t errorNow() {
  switch (errno) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case ELOOP:
      return -43;
    case ENAMETOOLONG:
      return -37;
    case ENOSPC:
    case EDQUOT:
      return -34;
    case EROFS:
      return -44;
    case EMFILE:
    case ENFILE:
      return -42;
    case EACCES:
    case EPERM:
      return -54;
    default:
      return -36;
  }
}

/// What is no regular file (a pipe would hold the script up) counts as none.
[[nodiscard]] std::int64_t problemOf(FileDescriptor const& file) {
  if (!file) return errorNow();
  struct stat status{};
  if (::fstat(file.get(), &status) != 0) return errorNow();
  return S_ISREG(status.st_mode) ? 0 : -43;
}

constexpr int kNewFileMode = 0666;  // less what the umask takes

[[nodiscard]] int openToWrite(std::string const& path) {
  return ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFileMode);
}

}  // namespace

std::optional<applescript::HostFiles::Information> ScriptFiles::information(std::string const& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  std::tm local{};
  std::time_t const moment = status.st_mtim.tv_sec;
  std::int64_t const fromGmt = ::localtime_r(&moment, &local) == nullptr ? 0 : local.tm_gmtoff;
  return Information{S_ISDIR(status.st_mode), ::access(path.c_str(), W_OK) != 0, status.st_size, moment + fromGmt};
}

applescript::HostFiles::Bytes ScriptFiles::read(std::string const& path, std::size_t offset, std::size_t count) {
  FileDescriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  Bytes result;
  result.error = problemOf(file);
  if (result.error != 0) return result;
  result.bytes.resize(count);
  std::size_t done = 0;
  while (done < count) {
    auto const got = ::pread(file.get(), result.bytes.data() + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) result.error = errorNow();
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  result.bytes.resize(done);
  return result;
}

std::int64_t ScriptFiles::write(std::string const& path, std::size_t offset, std::string const& bytes) {
  FileDescriptor const file(openToWrite(path));
  if (std::int64_t const problem = problemOf(file); problem != 0) return problem;
  std::size_t done = 0;
  while (done < bytes.size()) {
    auto const put = ::pwrite(file.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return errorNow();
    done += static_cast<std::size_t>(put);
  }
  return 0;
}

std::int64_t ScriptFiles::resize(std::string const& path, std::size_t size) {
  FileDescriptor const file(openToWrite(path));
  if (std::int64_t const problem = problemOf(file); problem != 0) return problem;
  return ::ftruncate(file.get(), static_cast<off_t>(size)) == 0 ? 0 : errorNow();
}

std::optional<std::vector<std::string>> ScriptFiles::namesIn(std::string const& folder) {
  std::error_code error;
  std::filesystem::directory_iterator entries(folder, error);
  if (error) return std::nullopt;
  std::vector<std::string> names;
  for (; entries != std::filesystem::directory_iterator(); entries.increment(error)) {
    if (error) return std::nullopt;
    names.push_back(entries->path().filename().string());
  }
  return names;
}

}  // namespace morla::linux
