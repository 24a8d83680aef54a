#include "platform/linux/system/DefaultsFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <thread>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/RegularFile.h"
#include "platform/linux/system/DefaultsJson.h"
#include "platform/linux/system/XdgFolders.h"

namespace morla::linux {
namespace {

std::string because(std::string const& what, int error) {
  return what + ": " + std::strerror(error);
}

/// The same whether it is found out by a read or by a write, so that it is told once.
std::string unreadable(std::string const& path, FileText const& file) {
  return path + " cannot be read and is left alone: " + file.problem;
}

DefaultsFile::Change failed(std::string problem) {
  return {DefaultsFile::Outcome::failed, std::move(problem)};
}

/// 0, or the error.
int writeWhole(std::string const& path, std::string_view text) {
  // What stands there was left by a writer that was killed, or is nobody's: a pipe or a link is never written to.
  if (unlink(path.c_str()) != 0 && errno != ENOENT) return errno;
  FileDescriptor const file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file) return errno;
  while (!text.empty()) {
    auto const count = ::write(file.get(), text.data(), text.size());
    if (count < 0 && errno != EINTR) return errno;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

/// A person may keep the file elsewhere and link to it: then the file is replaced, not the link.
std::string linkTarget(std::string const& path) {
  std::error_code failure;
  auto const target = std::filesystem::canonical(path, failure);
  return failure ? path : target.string();
}

/// Keeps the damaged file under another name; a second look at the same file keeps nothing more.
int keepDamaged(std::string const& path) {
  struct stat damaged{};
  if (stat(path.c_str(), &damaged) != 0) return errno;
  std::tm time{};
  gmtime_r(&damaged.st_mtime, &time);
  std::array<char, 32> stamp{};
  std::strftime(stamp.data(), stamp.size(), "%Y%m%dT%H%M%SZ", &time);
  std::string const name = path + ".broken-" + stamp.data();
  for (int attempt = 1; attempt < 100; ++attempt) {
    std::string const candidate = attempt == 1 ? name : name + '-' + std::to_string(attempt);
    if (link(path.c_str(), candidate.c_str()) == 0) return 0;
    if (errno != EEXIST) return errno;
    struct stat existing{};
    bool const isKept = stat(candidate.c_str(), &existing) == 0 && existing.st_ino == damaged.st_ino &&
                        existing.st_dev == damaged.st_dev;
    if (isKept) return 0;
  }
  return EEXIST;
}

void apply(nlohmann::json& object, DefaultsFile::Changes const& changes) {
  for (auto const& [key, value] : changes) {
    auto const written = value ? jsonValue(*value) : std::nullopt;
    if (written) {
      object[key] = *written;
    } else {
      object.erase(key);
    }
  }
}

/// Between two attempts: a writer holds the lock for less than that.
constexpr std::chrono::milliseconds kLockInterval{5};

/// 0, or the error: EWOULDBLOCK when another process holds it all the while. Held until the descriptor is closed, also
/// by the end of the process.
int lock(FileDescriptor const& file, std::chrono::milliseconds patience) {
  auto const end = std::chrono::steady_clock::now() + patience;
  while (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= end) return errno;
    std::this_thread::sleep_for(kLockInterval);
  }
  return 0;
}

}  // namespace

std::string DefaultsFile::usualPath() {
  return configHome() + "/morla/defaults.json";
}

DefaultsFile::Read DefaultsFile::read() const {
  auto const file = readRegularFile(path_);
  if (!file.problem.empty()) return {{}, unreadable(path_, file)};
  if (!file.text) return {};
  auto const parsed = parseDefaults(*file.text);
  Read result;
  for (auto const& [key, value] : parsed.object.items()) {
    if (auto known = defaultsValue(value)) result.values.emplace(key, std::move(*known));
  }
  if (!parsed.damage.empty()) {
    result.problem =
        path_ + " is damaged; " + std::to_string(result.values.size()) + " settings could be read: " + parsed.damage;
  }
  return result;
}

DefaultsFile::Change DefaultsFile::change(Changes const& changes, std::chrono::milliseconds patience,
                                          Values const& fallback) const {
  std::error_code failure;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), failure);
  if (failure) return failed(path_ + " cannot be written: " + failure.message());

  std::string const lockPath = path_ + ".lock";
  FileDescriptor const lockFile(open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
  if (!lockFile) return failed(because(lockPath + " cannot be opened", errno));
  int const error = lock(lockFile, patience);
  if (error == EWOULDBLOCK) return {Outcome::busy, lockPath + " is held by another program"};
  if (error != 0) return failed(because(lockPath + " cannot be locked", error));
  return changeUnderLock(changes, fallback);
}

DefaultsFile::Change DefaultsFile::changeUnderLock(Changes const& changes, Values const& fallback) const {
  std::string const target = linkTarget(path_);
  auto const before = readRegularFile(target);
  if (!before.problem.empty()) return failed(unreadable(path_, before));
  auto parsed = before.text ? parseDefaults(*before.text) : ParsedDefaults();
  if (!parsed.damage.empty()) {
    if (int const error = keepDamaged(target); error != 0) {
      return failed(because(path_ + " is damaged; no copy of it", error));
    }
    for (auto const& [key, value] : fallback) {
      auto const known = jsonValue(value);
      if (known && !parsed.object.contains(key)) parsed.object[key] = *known;
    }
  }
  apply(parsed.object, changes);

  // Under the lock nobody else writes it.
  std::string const temporary = target + ".new";
  int error = writeWhole(temporary, writtenDefaults(parsed.object));
  if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0) error = errno;
  if (error == 0) return {};
  (void)unlink(temporary.c_str());
  return failed(because(path_ + " cannot be written", error));
}

}  // namespace morla::linux
