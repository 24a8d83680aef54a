#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace morla::support {

using linux::FileDescriptor;

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};
/// No child inherits either end, unless it is given one.
[[nodiscard]] Pipe makePipe();

/// Descriptors of this process that become a child's own; with -1 it shares this process's stream.
struct ChildStreams {
  int input = -1;
  int output = -1;
  int errors = -1;
  int report = -1;  ///< has no fixed number: "{report}" in the child's arguments becomes the one it got
};

/// A program that a test starts, with this process's environment: it ends with this object, and with the test program,
/// however that ends.
class ChildProcess {
 public:
  ChildProcess() = default;
  /// The program is looked for in PATH. One that cannot be started ends with status 127.
  explicit ChildProcess(std::vector<std::string> arguments, ChildStreams const& streams = {});
  ~ChildProcess();
  ChildProcess(ChildProcess&& other) noexcept;
  ChildProcess& operator=(ChildProcess&& other) noexcept;

  [[nodiscard]] pid_t processIdentifier() const { return process_; }

  /// Waits for it to end by itself: its exit status, 128 + n after signal n, as a shell tells it.
  int wait();
  /// Asks it to end, and waits for that.
  void end();
  void killNow();

 private:
  pid_t process_ = -1;
};

}  // namespace morla::support
