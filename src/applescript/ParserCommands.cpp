#include <algorithm>

#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"
#include "applescript/Scoped.h"

namespace morla::applescript {

/// command := name [expression] {parameter expression | ("with" | "without") parameter {("," | "and") parameter}}
ExpressionPointer Parser::parseCommand(Resolution const& resolution) {
  std::size_t const start = cursor_;
  Dictionary::Command const& definition = *resolution.meanings.command;
  advance(resolution.words);
  if (definition.eventClass == "core"_code && definition.eventId == "cnte"_code) return parseCount(start);
  if (definition.eventClass == "core"_code && definition.eventId == "doex"_code) {
    ExpressionPointer operand = parseOperand();
    return make(start, tree::Exists{std::move(operand)});
  }
  std::vector<Dictionary::Parameter const*> const parameters = parametersOf(definition);
  tree::Command command{definition.name, definition.eventClass, definition.eventId, nullptr, {}};
  std::size_t words = 0;
  // `display alert x as warning`: there "as" is the command's, and no coercion.
  bool const hasAs = std::ranges::any_of(parameters, [](auto const* one) { return one->name == "as"; });
  Scoped<bool> const opaque(endsAtAs_, endsAtAs_ || hasAs);
  // `get eof of f`
  if (definition.eventClass == "rdwr"_code) acceptWord("of");
  if (parameterHere(parameters, words) == nullptr && startsExpression()) command.direct = parseExpression();
  while (!failed()) {
    if (Dictionary::Parameter const* parameter = parameterHere(parameters, words)) {
      advance(words);
      parseParameter(*parameter, command);
    } else if (word().isName("with") || word().isName("without")) {
      parseFlags(parameters, command);
    } else {
      break;
    }
  }
  return make(start, std::move(command));
}

/// An application that defines a standard command again may leave the standard parameters out.
std::vector<Dictionary::Parameter const*> Parser::parametersOf(Dictionary::Command const& command) const {
  std::vector<Dictionary::Parameter const*> all;
  if (Terminology const* own = resolver_.applicationTerms()) all = own->parametersOf(command);
  std::optional<std::string> const standardName = standardTerms().commandName(command.eventClass, command.eventId);
  Meanings const* standard = standardName ? standardTerms().find(lowercaseKey(*standardName)) : nullptr;
  if (standard == nullptr || standard->command == nullptr) return all;
  for (Dictionary::Parameter const* parameter : standardTerms().parametersOf(*standard->command)) {
    bool const isKnown =
        std::ranges::any_of(all, [parameter](auto const* one) { return one->code == parameter->code; });
    if (!isKnown) all.push_back(parameter);
  }
  return all;
}

Dictionary::Parameter const* Parser::parameterHere(std::vector<Dictionary::Parameter const*> const& parameters,
                                                   std::size_t& words) const {
  Dictionary::Parameter const* longest = nullptr;
  words = 0;
  for (Dictionary::Parameter const* parameter : parameters) {
    std::size_t const count = resolver_.matchPhrase(cursor_, lowercaseKey(parameter->name));
    if (count <= words) continue;
    words = count;
    longest = parameter;
  }
  return longest;
}

void Parser::parseParameter(Dictionary::Parameter const& parameter, tree::Command& command) {
  bool const isClass = parameter.code == "kocl"_code;
  std::size_t const start = cursor_;
  for (auto const& [code, value] : command.parameters) {
    if (code != parameter.code) continue;
    return fail(errors::kParameterTwice, "The " + parameter.name + " parameter is specified more than once.");
  }
  if (isClass) {
    std::optional<Code> const type = parseClassName();
    if (type) command.parameters.emplace_back(parameter.code, make(start, tree::Literal{TypeCode{*type}}));
    return;
  }
  // `offset of x in y`: the next parameter is called "in", which else would go on with the reference.
  bool const isOffset = command.eventClass == "syso"_code && command.eventId == "offs"_code;
  Scoped<bool> const opaque(endsAtIn_, isOffset && parameter.code == "psof"_code);
  // `read f as text using delimiter tab`: after a class no selector is meant.
  if (parameter.name == "as" && resolve().meanings.type && !word(resolve().words).isSymbol("(")) {
    std::optional<Code> const type = parseClassName();
    if (type) command.parameters.emplace_back(parameter.code, make(start, tree::Literal{TypeCode{*type}}));
    return;
  }
  command.parameters.emplace_back(parameter.code, parseExpression());
}

/// flags := ("with" | "without") parameter {("," | "and") parameter}
void Parser::parseFlags(std::vector<Dictionary::Parameter const*> const& parameters, tree::Command& command) {
  bool const value = word().isName("with");
  advance();
  do {
    std::size_t const start = cursor_;
    std::size_t words = 0;
    Dictionary::Parameter const* parameter = parameterHere(parameters, words);
    if (parameter == nullptr) return failExpected("parameter name");
    advance(words);
    command.parameters.emplace_back(parameter->code, make(start, tree::Literal{value}));
  } while (acceptSymbol(",") || acceptWord("and"));
}

/// count := "count" ["of"] operand ["each" class]
ExpressionPointer Parser::parseCount(std::size_t start) {
  acceptWord("of");
  bool const isOfTarget = word().isName("each") || !startsExpression();
  ExpressionPointer operand = isOfTarget ? make(start, tree::ImpliedTarget{}) : parseOperand();
  if (acceptWord("each")) {
    std::optional<Code> const type = parseClassName();
    if (word().isName("of") || word().isName("in")) {
      advance();
      operand = parseOperand();
    }
    using Form = tree::ElementOf::Form;
    if (type) operand = make(start, tree::ElementOf{*type, Form::every, nullptr, nullptr, std::move(operand)});
  }
  return make(start, tree::Count{std::move(operand)});
}

/// raw event := «event classid» [expression] ["given" «class code» ":" expression {"," …}]
ExpressionPointer Parser::parseRawEvent() {
  std::size_t const start = cursor_;
  std::string const code = word().text.substr(std::string_view("event ").size());
  if (code.size() != 8) failExpected("expression");
  advance();
  tree::Command command{"«event " + code + "»",
                        Code(std::string_view(code).substr(0, 4)),
                        Code(code.size() < 4 ? std::string_view() : std::string_view(code).substr(4)),
                        nullptr,
                        {}};
  if (startsExpression()) command.direct = parseExpression();
  if (acceptWord("given")) {
    do {
      Meanings const meanings = resolve().meanings;
      if (!meanings.type && !meanings.property) failExpected("class name");
      advance();
      expectSymbol(":");
      command.parameters.emplace_back(meanings.type.value_or(meanings.property.value_or(Code())), parseExpression());
    } while (acceptSymbol(","));
  }
  return make(start, std::move(command));
}

}  // namespace morla::applescript
