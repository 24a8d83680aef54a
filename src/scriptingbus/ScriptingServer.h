#pragma once

#include <functional>
#include <memory>
#include <string>

#include "applescript/AppleEvent.h"

struct sd_bus;

namespace morla::scriptingbus {

/// What a scriptable application tells about itself.
struct ServedApplication {
  std::string busName;  ///< its bundle identifier
  std::string name;     ///< localized name
  std::string version;
  std::string dictionary;  ///< the table, verbatim
};

/// The application's side of Apple events over the session bus: owns the bus name, serves the dictionary, hands every
/// event to a handler. One thread, the one that opened it.
class ScriptingServer {
 public:
  /// Call it at most once, now or later; a reply is due until then, and dropping it means silence.
  using Answer = std::function<void(applescript::EventReply)>;
  using Handler = std::function<void(applescript::AppleEvent event, Answer answer)>;

  struct Opened {
    std::unique_ptr<ScriptingServer> server;  ///< null: `failure` says why (no bus, name taken)
    std::string failure;
  };
  [[nodiscard]] static Opened open(ServedApplication application, Handler handler);

  virtual ~ScriptingServer() = default;

  /// Watch this for reading and call `process` whenever it is readable; also once right after opening.
  [[nodiscard]] virtual int fileDescriptor() const = 0;

  /// Handles everything that has arrived. False once the bus has gone.
  virtual bool process() = 0;

  /// The connection that owns the bus name, for what an application serves besides on it; never null, lives as long as
  /// the server. Objects added before the first `process` miss no call.
  [[nodiscard]] virtual sd_bus* connection() const = 0;
};

}  // namespace morla::scriptingbus
