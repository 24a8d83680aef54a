#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

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
};

}  // namespace morla::applescript
