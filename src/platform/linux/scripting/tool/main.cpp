// `applescript`: runs a script from the command line. What toolHelp() says is the whole contract.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "applescript/Interpreter.h"
#include "platform/linux/scripting/ScriptHost.h"
#include "platform/linux/scripting/tool/SourcePosition.h"
#include "platform/linux/scripting/tool/ToolArguments.h"
#include "platform/linux/scripting/tool/ValueText.h"

using namespace morla;
using namespace morla::linux;

static constexpr int kFailure = 1;
static constexpr int kUsage = 2;

/// The permissions of MORLA are this tool's, too: it is MORLA's own way to try a script.
static constexpr char kIdentifier[] = "app.morla.MORLA";

static std::optional<std::string> readAll(std::istream& stream) {
  std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (stream.bad()) return std::nullopt;
  return text;
}

/// Nothing when it cannot be read; errno says why.
static std::optional<std::string> sourceOf(ToolArguments const& arguments) {
  if (!arguments.lines.empty()) {
    std::string source;
    for (auto const& line : arguments.lines) source += line + "\n";
    return source;
  }
  if (arguments.file == "-") return readAll(std::cin);
  std::error_code ignored;
  if (std::filesystem::is_directory(arguments.file, ignored)) {  // it would open, and read as empty
    errno = EISDIR;
    return std::nullopt;
  }
  std::ifstream file(arguments.file, std::ios::binary);
  if (!file) return std::nullopt;
  return readAll(file);
}

static int report(ToolArguments const& arguments, std::string const& source,
                  applescript::ScriptFailure const& failure) {
  std::string const name = arguments.lines.empty() ? arguments.file : "-e";
  auto const position = positionIn(source, failure.range.start);
  std::cerr << name << ':' << position.line << ':' << position.column << ": error: " << failure.message << " ("
            << failure.number << ")\n";
  return kFailure;
}

/// Constants and objects are called by their applications' words in either form; script objects have but these.
static std::string shown(ToolArguments const& arguments, applescript::ScriptOutcome const& outcome) {
  bool const isNamed = !outcome.result || outcome.result->as<applescript::Enumerator>() != nullptr ||
                       outcome.result->as<applescript::TypeCode>() != nullptr ||
                       outcome.result->as<applescript::SpecifierPointer>() != nullptr;
  return arguments.form == ToolArguments::Form::source || isNamed ? *outcome.source : humanForm(*outcome.result);
}

static int runScript(ToolArguments const& arguments, std::string const& source) {
  ScriptingServices services(Bundles::installed(), privacy::PermissionStore::ofUser(), kIdentifier, nullptr);
  ScriptHost host(services, [](std::string const& line) { std::cerr << line << std::endl; });
  if (arguments.action == ToolArguments::Action::check) {
    auto const failure = applescript::check(source, host);
    return failure ? report(arguments, source, *failure) : 0;
  }
  applescript::TextItemDelimiters delimiters{""};
  bool const isFile = arguments.lines.empty() && arguments.file != "-";
  std::string const path = isFile ? std::filesystem::absolute(arguments.file).lexically_normal().string() : "";
  auto const outcome = applescript::run(source, host, delimiters, {}, {arguments.scriptArguments, true, path});
  if (outcome.failure) return report(arguments, source, *outcome.failure);
  if (!outcome.source) return 0;
  std::cout << shown(arguments, outcome) << '\n';
  return std::cout.flush() ? 0 : kFailure;
}

int main(int argc, char** argv) {
  auto const [arguments, problem] = parseToolArguments(std::vector<std::string>(argv + 1, argv + argc));
  if (!arguments) {
    std::cerr << "applescript: " << problem << "\n\n" << toolHelp();
    return kUsage;
  }
  if (arguments->action == ToolArguments::Action::help) {
    std::cout << toolHelp();
    return 0;
  }
  auto const source = sourceOf(*arguments);
  if (!source) {
    std::cerr << "applescript: " << arguments->file << ": " << std::strerror(errno) << '\n';
    return kFailure;
  }
  return runScript(*arguments, *source);
}
