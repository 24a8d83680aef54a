#include "support/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace morla::support {
namespace {

[[noreturn]] void become(std::vector<std::string>& arguments, ChildStreams const& streams, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);  // it had ended before
  // Numbers above those of the standard streams, so that none of them is overwritten; without the flag that closes it.
  int const report = streams.report < 0 ? -1 : fcntl(streams.report, F_DUPFD, STDERR_FILENO + 1);
  if (streams.input >= 0) dup2(streams.input, STDIN_FILENO);
  if (streams.output >= 0) dup2(streams.output, STDOUT_FILENO);
  if (streams.errors >= 0) dup2(streams.errors, STDERR_FILENO);
  std::string const placeholder = "{report}";
  std::vector<char*> words;
  for (auto& argument : arguments) {
    if (auto const at = argument.find(placeholder); at != std::string::npos) {
      argument.replace(at, placeholder.size(), std::to_string(report));
    }
    words.push_back(argument.data());
  }
  words.push_back(nullptr);
  execvp(words[0], words.data());
  std::perror(words[0]);
  _exit(127);
}

}  // namespace

Pipe makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

ChildProcess::ChildProcess(std::vector<std::string> arguments, ChildStreams const& streams) {
  pid_t const parent = getpid();
  process_ = fork();
  if (process_ == 0) become(arguments, streams, parent);
  if (process_ < 0) throw std::runtime_error("no process");
}

ChildProcess::~ChildProcess() {
  killNow();
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept : process_(std::exchange(other.process_, -1)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
  std::swap(process_, other.process_);
  return *this;
}

int ChildProcess::wait() {
  int status = 0;
  waitpid(std::exchange(process_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void ChildProcess::end() {
  if (process_ <= 0) return;
  kill(process_, SIGTERM);
  wait();
}

void ChildProcess::killNow() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  wait();
}

}  // namespace morla::support
