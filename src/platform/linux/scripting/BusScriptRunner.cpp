#include "platform/linux/scripting/BusScriptRunner.h"

#include <utility>

namespace morla::linux {

platform::ScriptReply BusScriptRunner::execute(std::string const& source) {
  applescript::TextItemDelimiters delimiters;
  {
    std::lock_guard const lock(mutex_);
    delimiters = delimiters_;
  }
  ScriptHost host(services_);
  auto const outcome = applescript::run(source, host, delimiters);
  {
    std::lock_guard const lock(mutex_);
    delimiters_ = std::move(delimiters);
  }
  platform::ScriptReply reply;
  if (outcome.failure) {
    reply.error = platform::ScriptError{outcome.failure->number, outcome.failure->message};
  } else if (outcome.result) {
    reply.text = applescript::stringValue(*outcome.result);
  }
  return reply;
}

}  // namespace morla::linux
