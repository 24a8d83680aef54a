#pragma once

#include <string>

#include "base/BackgroundWork.h"
#include "base/MainLoop.h"
#include "base/Task.h"
#include "platform/ScriptRunner.h"

namespace morla::platform {

/// What a script is for; told to the trace.
enum class ScriptKind { probe, status };

/// Runs scripts off the main thread. Any number at a time; each answer goes to its own caller. Main thread.
class ScriptExecution {
 public:
  ScriptExecution(MainLoop& loop, BackgroundWork& background, ScriptRunner& runner)
      : loop_(loop), background_(background), runner_(runner) {}

  /// Runs `source` on a background thread of user-initiated quality. Waiting for it is never a cancellation point.
  /// This object may go while the task waits; the roles may not.
  [[nodiscard]] Task<ScriptReply> run(ScriptKind kind, std::string source);

 private:
  MainLoop& loop_;
  BackgroundWork& background_;
  ScriptRunner& runner_;
};

}  // namespace morla::platform
