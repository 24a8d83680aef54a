#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "applescript/Datum.h"
#include "applescript/ErrorNumbers.h"

namespace morla::applescript {

/// An error of the running script. The language's errors unwind its statements up to a `try`, and C++ exceptions do the
/// same with the evaluator's frames; none leaves run().
struct ScriptError {
  std::int64_t number = errors::kGeneral;
  std::string brief;
  std::optional<std::string> applicationName;
  bool isFromApplication = false;  ///< the message says so
  Datum offender;
  Datum expectedType;
  Datum partialResult;
  bool isFinal = false;  ///< a limit was exceeded: no `try` goes on after that

  [[nodiscard]] std::string message() const {
    return isFromApplication && applicationName ? *applicationName + " got an error: " + brief : brief;
  }
};

[[noreturn]] inline void raise(std::int64_t number, std::string brief, Datum offender = {}) {
  ScriptError error;
  error.number = number;
  error.brief = std::move(brief);
  error.offender = std::move(offender);
  throw error;
}

}  // namespace morla::applescript
