#pragma once

#include <cstdint>
#include <random>

#include "applescript/Applications.h"
#include "applescript/Datum.h"
#include "applescript/Interpreter.h"
#include "applescript/OpenFiles.h"

namespace morla::applescript {

/// What every part of the evaluator shares during one run.
struct RunState {
  RunState(Host& theHost, Applications& theApplications, Limits const& theLimits)
      : host(theHost), applications(theApplications), limits(theLimits) {}

  Heap heap;  // first, since everything below may hold data of it
  Host& host;
  Applications& applications;
  Limits const& limits;
  TextItemDelimiters delimiters;
  bool delimitersAreText = false;  ///< they were set as one text, and read back as one
  Considerations considerations;
  bool ignoresResponses = false;  ///< `ignoring application responses`
  std::string scriptPath;         ///< the script's own file, or ""
  Datum clipboard = "";           ///< each run has its own: what the user has copied is no business of a script
  OpenFiles openFiles;
  std::mt19937_64 random{std::random_device{}()};

  /// Counts `count` steps of work; the script ends when there were too many.
  void spend(std::uint64_t count = 1);
  [[nodiscard]] ListReference makeList(std::vector<Datum> items);
  [[nodiscard]] Datum makeText(std::string text);
  /// The text with `more` at its end.
  [[nodiscard]] Datum append(Text const& text, std::string_view more);

 private:
  std::uint64_t steps_ = 0;
};

}  // namespace morla::applescript
