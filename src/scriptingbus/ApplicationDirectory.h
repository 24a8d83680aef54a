#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "scriptingbus/ConnectionPool.h"
#include "scriptingbus/KnownOwners.h"

namespace morla::scriptingbus {

/// A running program that answers the scripting interface.
struct ScriptableApplication {
  std::string busName;  ///< its bundle identifier
  std::string name;     ///< localized name
  std::int64_t processIdentifier = 0;
};

/// Which scriptable applications run. Starts nothing. A program has one for all its scripts: any thread, several at
/// once; every method blocks.
class ApplicationDirectory {
 public:
  explicit ApplicationDirectory(ConnectionPool& pool) : pool_(pool) {}
  ApplicationDirectory(ApplicationDirectory const&) = delete;
  ApplicationDirectory& operator=(ApplicationDirectory const&) = delete;

  /// Somebody owns `busName`. Asks the bus alone.
  [[nodiscard]] bool isRunning(std::string const& busName);

  /// The localized name of the application that runs as `busName`; nothing when none does, or when it is not scriptable
  /// or silent.
  [[nodiscard]] std::optional<std::string> nameOf(std::string const& busName) {
    KnownOwners unknown;
    return nameOf(busName, unknown);
  }
  /// The same; whoever it is is known then.
  [[nodiscard]] std::optional<std::string> nameOf(std::string const& busName, KnownOwners& owners);

  /// Whichever came to the bus first is first. An application that is silent is left out.
  [[nodiscard]] std::vector<ScriptableApplication> scriptableApplications();

 private:
  struct Owner {
    std::string busName;
    std::string uniqueName;
  };
  /// What the owner of a bus name answered when it was asked for its name. Good for as long as the unique name is the
  /// same: the bus never gives one to anybody else.
  struct Known {
    enum class Answer { scriptable, notScriptable, silent };
    std::string uniqueName;
    Answer answer = Answer::notScriptable;
    std::string applicationName;
    std::chrono::steady_clock::time_point when;
  };

  [[nodiscard]] static std::vector<Owner> listOwners(ConnectionPool::Lease& lease);
  void askForNames(ConnectionPool::Lease& lease, std::vector<Owner> const& owners);
  /// Drops what is known about names that nobody owns any more.
  void forgetAllBut(std::vector<Owner> const& owners);
  void remember(Owner const& owner, sd_bus_message* reply);
  [[nodiscard]] bool mustBeAsked(Owner const& owner);
  [[nodiscard]] std::optional<std::string> knownName(Owner const& owner);

  ConnectionPool& pool_;
  std::mutex mutex_;
  std::map<std::string, Known> known_;  ///< by bus name
};

}  // namespace morla::scriptingbus
