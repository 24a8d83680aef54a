#include "applescript/Interpreter.h"

#include <utility>

#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"
#include "applescript/Parser.h"

namespace morla::applescript {

ScriptOutcome run(std::string_view source, Host& host, TextItemDelimiters& delimiters, Limits const& limits,
                  Invocation const& invocation) {
  Applications applications(host);
  Parser::Result parsed = Parser(source, applications, limits).parse();
  if (!parsed.script) return {std::nullopt, std::move(parsed.failure)};
  RunState state(host, applications, limits);
  state.delimiters = delimiters;
  state.scriptPath = invocation.path;
  ScriptOutcome outcome;
  Evaluator evaluator(*parsed.script, state);
  try {
    if (std::optional<Datum> const result = evaluator.run(invocation.arguments)) {
      outcome.result = evaluator.exported(*result);
      if (invocation.wantsSource) outcome.source = sourceText(dereferenced(*result), state);
    }
  } catch (ScriptError const& error) {
    outcome.failure =
        ScriptFailure{error.number, error.message(), error.brief, error.applicationName, evaluator.range()};
  }
  delimiters = std::move(state.delimiters);
  return outcome;
}

std::optional<ScriptFailure> check(std::string_view source, Host& host, Limits const& limits) {
  Applications applications(host);
  return Parser(source, applications, limits).parse().failure;
}

std::optional<std::string> stringValue(Value const& value) {
  if (auto const* text = value.as<std::string>()) return *text;
  if (auto const* integer = value.as<std::int64_t>()) return std::to_string(*integer);
  if (auto const* real = value.as<double>()) return textOfReal(*real);
  if (auto const* boolean = value.as<bool>()) return *boolean ? "true" : "false";
  if (auto const* type = value.as<TypeCode>()) return type->code.text();
  if (auto const* enumerator = value.as<Enumerator>()) return enumerator->code.text();
  if (auto const* file = value.as<FileUrl>()) return file->path;
  if (auto const* alias = value.as<Alias>()) return alias->path;
  return std::nullopt;
}

}  // namespace morla::applescript
