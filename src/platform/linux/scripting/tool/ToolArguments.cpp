#include "platform/linux/scripting/tool/ToolArguments.h"

#include <cstddef>
#include <utility>

namespace morla::linux {

namespace {

class Parser {
 public:
  explicit Parser(std::vector<std::string> const& words) : words_(words) {}

  ToolArgumentsOrProblem parse() {
    bool hasOptions = true;
    while (problem_.empty() && next_ < words_.size()) {
      std::string const& word = words_[next_++];
      if (hasOptions && word == "--") {
        hasOptions = false;
      } else if (hasOptions && word.size() > 1 && word.front() == '-') {
        takeOption(word);
      } else {
        // The first word that is no option ends the options; what follows is the script's own.
        hasOptions = false;
        takeOther(word);
      }
    }
    if (!problem_.empty()) return {std::nullopt, problem_};
    return {std::move(arguments_), {}};
  }

 private:
  void takeOption(std::string const& word) {
    if (word == "-e") {
      if (auto line = takeValue(word)) arguments_.lines.push_back(std::move(*line));
    } else if (word == "-s") {
      if (auto const form = takeValue(word)) takeForm(*form);
    } else if (word == "--check") {
      arguments_.action = ToolArguments::Action::check;
    } else if (word == "--help" || word == "-h") {
      arguments_.action = ToolArguments::Action::help;
    } else {
      problem_ = "unknown option " + word;
    }
  }

  void takeForm(std::string const& form) {
    if (form == "h") {
      arguments_.form = ToolArguments::Form::human;
    } else if (form == "s") {
      arguments_.form = ToolArguments::Form::source;
    } else {
      problem_ = "-s takes h or s, not " + form;
    }
  }

  /// The script's file, unless -e gave the script; then an argument.
  void takeOther(std::string const& word) {
    if (hasFile_ || !arguments_.lines.empty()) {
      arguments_.scriptArguments.push_back(word);
      return;
    }
    hasFile_ = true;
    arguments_.file = word;
  }

  std::optional<std::string> takeValue(std::string const& option) {
    if (next_ < words_.size()) return words_[next_++];
    problem_ = option + " needs a value";
    return std::nullopt;
  }

  std::vector<std::string> const& words_;
  std::size_t next_ = 0;
  ToolArguments arguments_;
  bool hasFile_ = false;
  std::string problem_;
};

}  // namespace

ToolArgumentsOrProblem parseToolArguments(std::vector<std::string> const& words) {
  return Parser(words).parse();
}

std::string toolHelp() {
  return "Usage: applescript [-s h|s] [--check] {-e LINE... | [FILE | -]} [ARGUMENT]...\n"
         "\n"
         "Runs AppleScript and prints the script's result.\n"
         "\n"
         "  -e LINE    a line of the script; several make up the script, in their order\n"
         "  FILE       a file that holds the script; - or none: standard input\n"
         "  ARGUMENT   goes to the script's \"on run argv\"\n"
         "  -s h       print the result for people to read (without this option, too)\n"
         "  -s s       print the result as a script would write it\n"
         "  --check    compile the script, do not run it\n"
         "  --help     print this\n"
         "\n"
         "The permissions of MORLA count. Nobody is asked: what the user has not decided yet fails with -1744.\n"
         "Errors go to standard error as FILE:LINE:COLUMN: error: TEXT (NUMBER).\n"
         "Exit status: 0; 1 when the script failed or cannot be read; 2 for a wrong command line.\n";
}

}  // namespace morla::linux
