#include <array>

#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"

namespace morla::applescript {
namespace {

/// The words that can stand before a parameter of a handler with labels.
constexpr auto kPrepositions = std::to_array<std::string_view>(
    {"about",  "above",   "against", "apart from", "around",  "aside from", "at",   "below", "beneath",
     "beside", "between", "by",      "for",        "from",    "instead of", "into", "on",    "onto",
     "out of", "over",    "since",   "thru",       "through", "to",         "under"});

[[nodiscard]] std::string keyOf(Word const& name) {
  return name.kind == WordKind::name ? name.key : name.text;
}

[[nodiscard]] bool isAnyName(Word const& word) {
  return word.kind == WordKind::name || word.kind == WordKind::pipedName;
}

}  // namespace

std::size_t Parser::slotOf(std::string const& key) {
  mentioned_.insert(key);
  auto& slots = routine_->routine->slots;
  return slots.try_emplace(key, slots.size()).first->second;
}

/// Which names are handlers', as far as the words alone tell: a call may stand before the handler.
void Parser::findHandlerNames() {
  for (std::size_t i = 0; i + 2 < words_.size(); ++i) {
    bool const startsLine = i == 0 || words_[i - 1].kind == WordKind::lineEnd;
    if (!startsLine || !(words_[i].isName("on") || words_[i].isName("to")) || !isAnyName(words_[i + 1])) continue;
    if (words_[i + 1].isName("error") || words_[i + 1].isName("run")) continue;
    if (words_[i + 2].isSymbol("(")) {
      positionalHandlers_.insert(keyOf(words_[i + 1]));
    } else if (!words_[i + 2].isSymbol(":")) {
      labelledHandlers_.insert(keyOf(words_[i + 1]));
    }
  }
}

/// The script objects of a finished handler need its variables when they mention one of its names.
void Parser::finish(RoutineScope& scope) {
  for (auto& [script, names] : scope.scripts) {
    for (std::string const& name : names) {
      if (scope.routine->slots.contains(name)) script->usesCreator = true;
    }
  }
}

/// script := { handler | property | script object | statement | line end }
void Parser::parseScriptBody(Script& script) {
  Nesting const nesting(*this);
  RoutineScope run{&script.run.routine, {}};
  RoutineScope initializers{&script.initializers, {}};
  std::vector<std::pair<std::size_t, tree::Variable>> objects;  // with their places among the statements
  Scoped<RoutineScope*> const routine(routine_, &run);
  Scoped<std::size_t> const loops(loops_, 0);
  while (!failed() && word().kind != WordKind::end && !(isNested_ && atBlockEnd())) {
    if (word().kind == WordKind::lineEnd) {
      advance();
      continue;
    }
    if (word().isName("on") || word().isName("to")) {
      parseHandler(script);
    } else if (word().isName("property") || word().isName("prop")) {
      Scoped<RoutineScope*> const inside(routine_, &initializers);
      parseProperty(script);
    } else if (word().isName("script")) {
      std::unique_ptr<Script> inner = parseScriptObject(initializers);
      objects.emplace_back(script.run.body.size(), tree::Variable{inner->key, inner->name, slotOf(inner->key)});
      RecordKey key = inner->key;
      script.members.push_back({std::move(key), nullptr, std::move(inner)});
    } else if (resolver_.matchPhrase(cursor_, "use") > 0 && resolve().kind == Resolution::Kind::identifier) {
      parseUse();
    } else {
      if (!script.isRunImplied) failExpected("“on”, “property” or end of script");
      script.run.body.push_back(parseStatement());
    }
    expectStatementEnd();
  }
  // Where the script itself is run, a script object among its statements is one, with a value.
  for (std::size_t i = objects.size(); script.isRunImplied && i-- > 0;) {
    auto& [place, variable] = objects[i];
    Statement statement{tree::Evaluate{make(cursor_, std::move(variable))}, {}};
    script.run.body.insert(script.run.body.begin() + static_cast<std::ptrdiff_t>(place), std::move(statement));
  }
  finish(run);
  finish(initializers);
}

/// use := "use" "scripting" "additions" | "use" "AppleScript" ["version" text]
void Parser::parseUse() {
  advance();
  if (acceptPhrase("scripting additions")) return;
  expectWord("applescript");
  if (acceptWord("version")) {
    if (word().kind != WordKind::text) failExpected("string");
    advance();
  }
}

/// script object := "script" [identifier] EOL script "end" ["script"]
std::unique_ptr<Script> Parser::parseScriptObject(RoutineScope& creator) {
  Nesting const nesting(*this);
  advance();
  auto script = std::make_unique<Script>();
  if (!atStatementEnd()) {
    if (resolve().kind != Resolution::Kind::identifier) failExpected("script name");
    script->name = word().text;
    script->key = keyOf(word());
    advance();
  }
  expectStatementEnd();
  std::set<std::string> outerNames = std::exchange(mentioned_, {});
  {
    Scoped<bool> const nested(isNested_, true);
    parseScriptBody(*script);
  }
  endBlock("script");
  outerNames.insert(mentioned_.begin(), mentioned_.end());
  creator.scripts.emplace_back(script.get(), std::exchange(mentioned_, std::move(outerNames)));
  return script;
}

/// script statement, in a handler: a new script object each time
Statement::Node Parser::parseScriptStatement() {
  std::size_t const start = cursor_;
  std::unique_ptr<Script> script = parseScriptObject(*routine_);
  ExpressionPointer variable;
  if (!script->key.empty()) {
    variable = make(start, tree::Variable{script->key, script->name, slotOf(script->key)});
  }
  return tree::DefineScript{std::move(script), std::move(variable)};
}

/// handler := ("on" | "to") name parameters EOL block "end" [name]
void Parser::parseHandler(Script& script) {
  std::size_t const start = cursor_;
  advance();
  Handler handler;
  RoutineScope scope{&handler.routine, {}};
  Scoped<RoutineScope*> const routine(routine_, &scope);
  Scoped<std::size_t> const loops(loops_, 0);
  std::size_t const nameAt = cursor_;
  bool const isRun = word().isName("run");
  Resolution const resolution = resolve();
  if (!isAnyName(word()) || resolution.kind == Resolution::Kind::grammar) return failExpected("handler name");
  handler.name = word().text;
  handler.key = keyOf(word());
  advance();
  parseHandlerParameters(handler);
  expectStatementEnd();
  handler.body = parseBlock();
  expectWord("end");
  if (!atStatementEnd()) {
    if (keyOf(word()) != keyOf(words_[nameAt])) return failExpected("“end " + handler.name + "”");
    advance();
    while (acceptSymbol(":") && isAnyName(word())) advance();
  }
  handler.range = rangeFrom(start);
  finish(scope);
  if (failed()) return;
  if (isRun) {
    if (!script.isRunImplied || !script.run.body.empty()) {
      return fail(errors::kUnexpectedWord, "A script has one run handler, written out or implied.");
    }
    script.run = std::move(handler);
    script.isRunImplied = false;
    return;
  }
  std::string key = handler.key;
  std::string const name = handler.name;
  if (!script.handlers.emplace(std::move(key), std::move(handler)).second) {
    fail(errors::kHandlerTwice, "The " + name + " handler is specified more than once.");
  }
}

/// parameters := "(" [parameter {"," parameter}] ")"
///             | ":" pattern {name ":" pattern}
///             | [["of" | "in"] parameter] {preposition parameter}
///               ["given" label ":" parameter {"," label ":" parameter}]
void Parser::parseHandlerParameters(Handler& handler) {
  if (acceptSymbol("(")) {
    while (!failed() && !word().isSymbol(")")) {
      handler.parameters.push_back(parseHandlerParameter(""));
      if (!acceptSymbol(",")) break;
    }
    return expectSymbol(")");
  }
  if (word().isSymbol(":")) {
    handler.key += ":";
    advance();
    handler.parameters.push_back(parseHandlerParameter("", false));
    while (!failed() && isAnyName(word()) && word(1).isSymbol(":")) {
      handler.key += keyOf(word()) + ":";
      handler.name += ":" + word().text;
      advance(2);
      handler.parameters.push_back(parseHandlerParameter("", false));
    }
    handler.name += ":";
    return;
  }
  handler.isLabelled = true;
  bool const hasDirect = acceptWord("of") || acceptWord("in");
  if (hasDirect || word().isSymbol("{") || resolve().kind == Resolution::Kind::identifier) {
    handler.parameters.push_back(parseHandlerParameter(""));
  }
  while (!failed() && !atStatementEnd()) {
    if (acceptWord("given")) {
      do {
        std::string label = keyOf(word());
        if (!isAnyName(word())) failExpected("parameter name");
        advance();
        expectSymbol(":");
        handler.parameters.push_back(parseHandlerParameter(std::move(label)));
      } while (acceptSymbol(","));
      break;
    }
    std::string_view const preposition = acceptPreposition();
    if (preposition.empty()) return failExpected("“given”, “of” or end of line");
    handler.parameters.push_back(parseHandlerParameter(std::string(preposition)));
  }
}

/// parameter := pattern ["as" class] [":" expression]
HandlerParameter Parser::parseHandlerParameter(std::string label, bool mayHaveStandard) {
  HandlerParameter parameter{std::move(label), nullptr, std::nullopt, nullptr};
  parameter.pattern = word().isSymbol("{") ? parseBraces() : parseVariable();
  if (!failed() && !isPattern(*parameter.pattern)) failExpected("variable name");
  if (acceptWord("as")) parameter.type = parseClassName();
  if (mayHaveStandard && acceptSymbol(":")) parameter.standard = parseExpression();
  return parameter;
}

std::string_view Parser::acceptPreposition() {
  for (std::string_view const preposition : kPrepositions) {
    if (acceptPhrase(preposition)) return preposition == "thru" ? "through" : preposition;
  }
  return {};
}

/// property := ("property" | "prop") (identifier | term) ":" expression
void Parser::parseProperty(Script& script) {
  advance();
  std::optional<std::pair<RecordKey, std::size_t>> key = recordKey();
  if (!key) {
    if (resolve().kind != Resolution::Kind::identifier) return failExpected("property name");
    advance();
    return expectSymbol(":");
  }
  for (ScriptMember const& member : script.members) {
    if (member.key != key->first) continue;
    return fail(errors::kPropertyTwice, "The " + word().text + " property is specified more than once.");
  }
  advance(key->second + 1);
  ExpressionPointer value = parseExpression();
  if (key->first == RecordKey("parent")) {
    script.parent = std::move(value);
  } else {
    script.members.push_back({std::move(key->first), std::move(value), nullptr});
  }
}

// --- Calls

/// Whether a handler is called at the cursor.
bool Parser::atHandlerCall() const {
  if (!isAnyName(word())) return false;
  bool const isIdentifier = resolve().kind == Resolution::Kind::identifier;
  if (word(1).isSymbol("(")) return isIdentifier || positionalHandlers_.contains(keyOf(word()));
  if (word(1).isSymbol(":")) return isIdentifier;
  return isIdentifier && labelledHandlers_.contains(keyOf(word()));
}

/// call := name "(" [expression {"," expression}] ")" ["of" operand]
///       | name ":" expression {name ":" expression}
///       | name labelled
ExpressionPointer Parser::parseHandlerCall(std::size_t start, ExpressionPointer receiver) {
  Nesting const nesting(*this);
  tree::HandlerCall call{keyOf(word()), word().text, std::move(receiver), {}};
  advance();
  if (acceptSymbol("(")) {
    {
      Scoped<bool> const inside(endsAtIn_, false);
      Scoped<bool> const coercing(endsAtAs_, false);
      while (!failed() && !word().isSymbol(")")) {
        call.arguments.push_back(parseExpression());
        if (!acceptSymbol(",")) break;
      }
    }
    expectSymbol(")");
    if (call.receiver == nullptr && acceptWord("of")) call.receiver = parseOperand();
  } else if (word().isSymbol(":")) {
    call.key.clear();
    call.name.clear();
    --cursor_;
    while (!failed() && isAnyName(word()) && word(1).isSymbol(":")) {
      call.key += keyOf(word()) + ":";
      call.name += word().text + ":";
      advance(2);
      call.arguments.push_back(parseExpression());
    }
  } else {
    parseLabelledArguments(call);
  }
  return make(start, std::move(call));
}

/// labelled := [("of" | "in") expression] {preposition expression} {"given" label ":" expression {"," …}
///           | ("with" | "without") label {("," | "and") label}}
void Parser::parseLabelledArguments(tree::HandlerCall& call) {
  call.isLabelled = true;
  if (acceptWord("of") || acceptWord("in")) call.direct = parseExpression();
  while (!failed() && !atStatementEnd()) {
    std::size_t const start = cursor_;
    if (acceptWord("given")) {
      do {
        std::string label = keyOf(word());
        if (!isAnyName(word())) failExpected("parameter name");
        advance();
        expectSymbol(":");
        call.labelled.emplace_back(std::move(label), parseExpression());
      } while (acceptSymbol(","));
    } else if (word().isName("with") || word().isName("without")) {
      bool const value = word().isName("with");
      advance();
      do {
        if (!isAnyName(word())) failExpected("parameter name");
        std::string label = keyOf(word());
        advance();
        call.labelled.emplace_back(std::move(label), make(start, tree::Literal{value}));
      } while (acceptSymbol(",") || acceptWord("and"));
    } else {
      std::string_view const preposition = acceptPreposition();
      if (preposition.empty()) break;
      call.labelled.emplace_back(std::string(preposition), parseExpression());
    }
  }
}

/// continue := "continue" (call | command)
ExpressionPointer Parser::parseContinue(std::size_t start) {
  advance();
  if (atHandlerCall()) {
    ExpressionPointer result = parseHandlerCall(start, nullptr);
    if (auto* call = result->as<tree::HandlerCall>()) call->isContinue = true;
    return result;
  }
  Resolution const resolution = resolve();
  if (resolution.meanings.command != nullptr) return parseCommand(resolution);
  failExpected("handler name");
  return make(start, tree::Literal{});
}

}  // namespace morla::applescript
