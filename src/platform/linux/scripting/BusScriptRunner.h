#pragma once

#include <mutex>
#include <string>

#include "applescript/Interpreter.h"
#include "platform/ScriptRunner.h"
#include "platform/linux/scripting/ScriptHost.h"

namespace morla::linux {

/// Runs AppleScript with the interpreter of this project, whose applications are those of the session bus.
class BusScriptRunner final : public platform::ScriptRunner {
 public:
  explicit BusScriptRunner(ScriptingServices& services) : services_(services) {}

  [[nodiscard]] platform::ScriptReply execute(std::string const& source) override;

 private:
  ScriptingServices& services_;
  std::mutex mutex_;
  applescript::TextItemDelimiters delimiters_{""};  ///< outlive the scripts; each run works on a copy
};

}  // namespace morla::linux
