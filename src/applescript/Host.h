#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "applescript/AppleEvent.h"
#include "applescript/Dictionary.h"

namespace morla::applescript {

/// How a script names an application.
struct ApplicationReference {
  enum class Kind { name, identifier } kind = Kind::name;
  std::string text;
  friend bool operator==(ApplicationReference const&, ApplicationReference const&) = default;
};

/// An application that was found.
struct ApplicationInformation {
  std::string name;        ///< as messages to people show it: "Capture One"
  std::string identifier;  ///< bundle identifier
};

struct ShellResult {
  int status = 0;
  std::string output;
  std::string errorOutput;
};

/// The files that the standard additions read and write, by POSIX path. Where a method answers an error, it is the
/// number that the command has ("-43": no such file), and 0 when all went well.
class HostFiles {
 public:
  virtual ~HostFiles() = default;

  struct Information {
    bool isFolder = false;
    bool isLocked = false;      ///< may not be written
    std::int64_t size = 0;      ///< in bytes
    std::int64_t modified = 0;  ///< as LocalTime::seconds
  };
  [[nodiscard]] virtual std::optional<Information> information(std::string const& path) = 0;

  struct Bytes {
    std::string bytes;  ///< fewer than asked for where the file ends
    std::int64_t error = 0;
  };
  [[nodiscard]] virtual Bytes read(std::string const& path, std::size_t offset, std::size_t count) = 0;

  /// Makes the file where there is none, and longer where it ends before `offset`. Never waits for a pipe or a device.
  [[nodiscard]] virtual std::int64_t write(std::string const& path, std::size_t offset, std::string const& bytes) = 0;
  [[nodiscard]] virtual std::int64_t resize(std::string const& path, std::size_t size) = 0;

  /// The names in a folder, in any order; nothing when it is none or cannot be read.
  [[nodiscard]] virtual std::optional<std::vector<std::string>> namesIn(std::string const& folder) = 0;
};

/// All that the interpreter knows of the world. One per run; the thread that runs the script calls it and may be held
/// up by every method. The interpreter itself knows no application.
class Host {
 public:
  virtual ~Host() = default;

  /// A running or installed application; nothing when it cannot be found. Never starts it.
  [[nodiscard]] virtual std::optional<ApplicationInformation> locate(ApplicationReference const& reference) = 0;

  /// Never starts the application, needs no permission; false for one that is unknown.
  [[nodiscard]] virtual bool isRunning(ApplicationReference const& reference) = 0;

  /// The application's terms; null when it has none or they cannot be read. Never starts it.
  [[nodiscard]] virtual std::shared_ptr<Dictionary const> dictionary(ApplicationInformation const& application) = 0;

  /// Called when a `tell` of the application is entered: nothing, or why the script may not talk to it. Never starts
  /// it.
  [[nodiscard]] virtual std::optional<EventError> enterTell(ApplicationInformation const& application) = 0;

  /// Sends one event and waits for its reply. Starts the application when it does not run.
  [[nodiscard]] virtual EventReply send(ApplicationInformation const& application, AppleEvent const& event) = 0;

  /// Runs `command` with /bin/sh in this process's name.
  [[nodiscard]] virtual ShellResult runShell(std::string const& command) = 0;

  /// What the local clock shows.
  struct LocalTime {
    std::int64_t seconds = 0;         ///< since the beginning of 1970 on the local calendar
    std::int64_t secondsFromGmt = 0;  ///< east of Greenwich is positive
  };
  [[nodiscard]] virtual LocalTime now() = 0;

  /// Holds the script up, for its `delay` command.
  virtual void wait(std::chrono::milliseconds duration) = 0;

  /// The user's home folder as a POSIX path without a slash at its end.
  [[nodiscard]] virtual std::string homeFolder() = 0;

  /// What the script's `log` command says, as source text. A host that has nowhere to show it drops it.
  virtual void log(std::string const& /*line*/) {}

  /// What is at a POSIX path, for aliases.
  enum class FileKind { none, file, folder };
  [[nodiscard]] virtual FileKind fileKindAt(std::string const& posixPath) = 0;

  /// Null: the script may not touch files, and its commands for them fail with -10004.
  [[nodiscard]] virtual HostFiles* files() { return nullptr; }

  /// For `system attribute`; nothing when there is no such variable, or it is no business of a script.
  [[nodiscard]] virtual std::optional<std::string> environmentVariable(std::string const& /*name*/) {
    return std::nullopt;
  }
};

}  // namespace morla::applescript
