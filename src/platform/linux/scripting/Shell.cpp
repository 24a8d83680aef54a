#include "platform/linux/scripting/Shell.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace morla::linux {

using applescript::ShellResult;

static constexpr int kNoShell = 127;

namespace {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    close();
    descriptor_ = std::exchange(other.descriptor_, -1);
    return *this;
  }
  ~Descriptor() { close(); }

  void close() {
    if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
  }
  [[nodiscard]] int get() const { return descriptor_; }

 private:
  int descriptor_ = -1;
};

struct Pipe {
  Descriptor readEnd;
  Descriptor writeEnd;

  [[nodiscard]] bool open() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return false;
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
    return true;
  }
};

/// What the shell starts with: its descriptors, and the signals that this program ignores or blocks for itself alone.
class SpawnSettings {
 public:
  SpawnSettings(Pipe const& output, Pipe const& errorOutput) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, output.writeEnd.get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, errorOutput.writeEnd.get(), STDERR_FILENO);
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  SpawnSettings(SpawnSettings const&) = delete;
  SpawnSettings& operator=(SpawnSettings const&) = delete;
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }

  [[nodiscard]] posix_spawn_file_actions_t const* actions() const { return &actions_; }
  [[nodiscard]] posix_spawnattr_t const* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

static ShellResult failure(std::string why) {
  return {kNoShell, {}, std::move(why)};
}

/// Reads both at once: a command that fills one pipe while we wait at the other would wait for ever.
static void drain(Descriptor const& output, std::string& text, Descriptor const& errorOutput, std::string& errorText) {
  std::array<pollfd, 2> watched{{{output.get(), POLLIN, 0}, {errorOutput.get(), POLLIN, 0}}};
  std::array<std::string*, 2> const texts{&text, &errorText};
  std::array<char, 65536> buffer{};
  while (watched[0].fd >= 0 || watched[1].fd >= 0) {
    if (::poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR) return;
    for (std::size_t i = 0; i < watched.size(); ++i) {
      if (watched[i].fd < 0 || watched[i].revents == 0) continue;
      auto const count = ::read(watched[i].fd, buffer.data(), buffer.size());
      if (count > 0) {
        texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
      } else if (count == 0 || errno != EINTR) {
        watched[i].fd = -1;  // which poll leaves out
      }
    }
  }
}

static int waitFor(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return kNoShell;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

static std::vector<char*> environmentWith(std::string& path) {
  static constexpr std::string_view kPath = "PATH=";
  std::vector<char*> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!std::string_view(*variable).starts_with(kPath)) variables.push_back(*variable);
  }
  variables.push_back(path.data());
  variables.push_back(nullptr);
  return variables;
}

ShellResult runShell(std::string const& command) {
  if (command.find('\0') != std::string::npos) return failure("The command holds a null character.");
  Pipe output;
  Pipe errorOutput;
  if (!output.open() || !errorOutput.open()) return failure(std::strerror(errno));

  std::string shell = "sh";
  std::string option = "-c";
  std::string text = command;
  std::array<char*, 4> const arguments{shell.data(), option.data(), text.data(), nullptr};
  std::string path = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";
  auto const environment = environmentWith(path);
  pid_t process = -1;
  {
    SpawnSettings const settings(output, errorOutput);
    int const error = ::posix_spawn(&process, "/bin/sh", settings.actions(), settings.attributes(), arguments.data(),
                                    environment.data());
    if (error != 0) return failure(std::strerror(error));
  }
  output.writeEnd.close();
  errorOutput.writeEnd.close();
  ShellResult result;
  drain(output.readEnd, result.output, errorOutput.readEnd, result.errorOutput);
  result.status = waitFor(process);
  return result;
}

}  // namespace morla::linux
