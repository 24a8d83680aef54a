#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morla::linux {

/// What the command line of `applescript` asks for.
struct ToolArguments {
  enum class Action { run, check, help };
  enum class Form { human, source };
  Action action = Action::run;
  Form form = Form::human;
  std::vector<std::string> lines;            ///< of -e; without any, the script comes from `file`
  std::string file = "-";                    ///< "-": standard input
  std::vector<std::string> scriptArguments;  ///< for the script's `on run argv`
};

struct ToolArgumentsOrProblem {
  std::optional<ToolArguments> arguments;
  std::string problem;  ///< when there are none
};

/// `words`: the command line without the program's name.
[[nodiscard]] ToolArgumentsOrProblem parseToolArguments(std::vector<std::string> const& words);

[[nodiscard]] std::string toolHelp();

}  // namespace morla::linux
