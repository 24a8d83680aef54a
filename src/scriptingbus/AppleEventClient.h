#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "applescript/AppleEvent.h"
#include "applescript/Dictionary.h"
#include "scriptingbus/ConnectionPool.h"
#include "scriptingbus/KnownOwners.h"

namespace morla::scriptingbus {

/// The script's side of Apple events over the session bus. A program has one for all its scripts: any thread, several
/// at once; every method blocks.
class AppleEventClient {
 public:
  explicit AppleEventClient(ConnectionPool& pool) : pool_(pool) {}
  AppleEventClient(AppleEventClient const&) = delete;
  AppleEventClient& operator=(AppleEventClient const&) = delete;

  struct DictionaryAnswer {
    std::shared_ptr<applescript::Dictionary const> dictionary;  ///< null: `problem` says why
    std::string problem;
  };
  /// The terms of the application that runs as `busName`, asked for once in its life. Starts nothing.
  [[nodiscard]] DictionaryAnswer dictionary(std::string const& busName) {
    KnownOwners unknown;
    return dictionary(busName, unknown);
  }
  [[nodiscard]] DictionaryAnswer dictionary(std::string const& busName, KnownOwners& owners);

  /// What becomes of an event to an application that does not run.
  enum class Launching { asNeeded, never };

  /// Sends `event` and waits for its reply, at most for the event's timeout; not at all when it wants none. When nobody
  /// owns `busName`, the bus is told to start the application, unless it never shall. Errors of the way there:
  ///
  ///     -600   it does not run and cannot or shall not be started
  ///     -609   it went while the reply was due
  ///     -1700  the event or the reply cannot be carried
  ///     -1708  it is not scriptable
  ///     -1712  no reply in time; a later one is ignored
  [[nodiscard]] applescript::EventReply send(std::string const& busName, applescript::AppleEvent const& event,
                                             Launching launching = Launching::asNeeded) {
    KnownOwners unknown;
    return send(busName, event, launching, unknown);
  }
  /// The same to the owner that is known, as long as there is one of that unique name.
  [[nodiscard]] applescript::EventReply send(std::string const& busName, applescript::AppleEvent const& event,
                                             Launching launching, KnownOwners& owners);

 private:
  struct CachedDictionary {
    std::string uniqueName;
    std::shared_ptr<applescript::Dictionary const> dictionary;
  };

  ConnectionPool& pool_;
  std::mutex mutex_;
  std::map<std::string, CachedDictionary> dictionaries_;  ///< by bus name
};

}  // namespace morla::scriptingbus
