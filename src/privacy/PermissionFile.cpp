#include "privacy/PermissionFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <thread>

namespace morla::privacy {
namespace {

/// Owns a descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor const&) = delete;
  Descriptor& operator=(Descriptor const&) = delete;
  ~Descriptor() {
    if (number_ >= 0) (void)close(number_);
  }
  [[nodiscard]] int get() const { return number_; }

 private:
  int number_;
};

/// A person may keep the file elsewhere and link to it: then the file is replaced, not the link.
std::string linkTarget(std::string const& path) {
  std::error_code failure;
  auto const target = std::filesystem::canonical(path, failure);
  return failure ? path : target.string();
}

bool isSameFile(std::string const& path, struct stat const& other) {
  struct stat status{};
  return stat(path.c_str(), &status) == 0 && status.st_ino == other.st_ino && status.st_dev == other.st_dev;
}

/// Between two attempts to take the lock: a writer holds it for less than that.
constexpr std::chrono::milliseconds kLockInterval{5};

int write(std::string const& path, std::string_view text) {
  // What stands there was left by a writer that was killed, or is nobody's: a pipe or a link is never written to.
  if (unlink(path.c_str()) != 0 && errno != ENOENT) return errno;
  Descriptor const file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (file.get() < 0) return errno;
  while (!text.empty()) {
    auto const count = ::write(file.get(), text.data(), text.size());
    if (count < 0 && errno != EINTR) return errno;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

}  // namespace

PermissionFile::Text PermissionFile::read(std::string const& path) {
  // Whatever is there in place of a file, a pipe for instance, must not hold a script up.
  Descriptor const file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.get() < 0) return errno == ENOENT ? Text{} : Text{std::nullopt, errno};
  std::string text;
  std::array<char, 4096> buffer;
  for (;;) {
    auto const count = ::read(file.get(), buffer.data(), buffer.size());
    if (count == 0) return {std::move(text), 0};
    if (count < 0 && errno != EINTR) return {std::nullopt, errno};
    if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

PermissionFile::PermissionFile(std::string const& path, std::chrono::milliseconds patience)
    : error_(takeLock(path, patience)) {
  // Under the lock, so that the link is not followed to what another writer is about to replace.
  target_ = linkTarget(path);
}

PermissionFile::~PermissionFile() {
  if (lock_ >= 0) (void)close(lock_);
}

int PermissionFile::takeLock(std::string const& path, std::chrono::milliseconds patience) {
  std::error_code failure;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), failure);
  if (failure) return failure.value();
  lock_ = open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
  if (lock_ < 0) return errno;
  auto const end = std::chrono::steady_clock::now() + patience;
  while (flock(lock_, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= end) return errno;
    std::this_thread::sleep_for(kLockInterval);
  }
  return 0;
}

int PermissionFile::keepAside() const {
  struct stat damaged{};
  if (stat(target_.c_str(), &damaged) != 0) return errno;
  std::tm time{};
  gmtime_r(&damaged.st_mtime, &time);
  std::array<char, 32> stamp{};
  std::strftime(stamp.data(), stamp.size(), "%Y%m%dT%H%M%SZ", &time);
  std::string const name = target_ + ".broken-" + stamp.data();
  for (int attempt = 1; attempt < 100; ++attempt) {
    std::string const candidate = attempt == 1 ? name : name + '-' + std::to_string(attempt);
    if (link(target_.c_str(), candidate.c_str()) == 0) return 0;
    if (errno != EEXIST) return errno;
    if (isSameFile(candidate, damaged)) return 0;
  }
  return EEXIST;
}

int PermissionFile::replace(std::string_view text) const {
  // Under the lock nobody else writes it.
  std::string const temporary = target_ + ".new";
  int error = write(temporary, text);
  if (error == 0 && std::rename(temporary.c_str(), target_.c_str()) != 0) error = errno;
  if (error != 0) (void)unlink(temporary.c_str());
  return error;
}

}  // namespace morla::privacy
