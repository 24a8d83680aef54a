#pragma once

#include "platform/ScriptRunner.h"

namespace morla::macos {

/// NSAppleScript, one object a run.
class AppleScriptRunner final : public platform::ScriptRunner {
 public:
  [[nodiscard]] platform::ScriptReply execute(std::string const& source) override;
};

}  // namespace morla::macos
