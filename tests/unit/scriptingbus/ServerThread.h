#pragma once

#include <memory>
#include <string>
#include <thread>

#include "scriptingbus/ScriptingServer.h"

namespace morla::scriptingbus::testing {

/// A ScriptingServer on a thread of its own, so that a test can call it and wait. The handler runs on that thread.
class ServerThread {
 public:
  /// Returns once it is served; throws when it cannot be.
  ServerThread(ServedApplication application, ScriptingServer::Handler handler);
  ~ServerThread();
  ServerThread(ServerThread const&) = delete;
  ServerThread& operator=(ServerThread const&) = delete;

 private:
  int stop_ = -1;
  std::thread thread_;
};

/// An application that has no terms.
[[nodiscard]] inline ServedApplication servedAs(std::string busName) {
  return {std::move(busName), "Toy", "1.0", ""};
}

}  // namespace morla::scriptingbus::testing
