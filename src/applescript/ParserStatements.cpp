#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"

namespace morla::applescript {

/// block := { statement EOL | EOL }
Block Parser::parseBlock() {
  Nesting const nesting(*this);
  Block block;
  while (!failed()) {
    while (word().kind == WordKind::lineEnd) advance();
    if (atBlockEnd()) break;
    block.push_back(parseStatement());
    expectStatementEnd();
  }
  return block;
}

/// A command whose name begins with such a word ("end live view") is a statement like others.
bool Parser::atBlockEnd() const {
  if (word().kind == WordKind::end) return true;
  if (word().isName("on")) return word(1).isName("error");
  return (word().isName("end") || word().isName("else")) && resolve().words <= 1;
}

/// "end" [name]
void Parser::endBlock(std::string_view name) {
  expectWord("end");
  if (!atStatementEnd()) expectWord(name);
}

Statement Parser::parseStatement() {
  Nesting const nesting(*this);
  std::size_t const start = cursor_;
  Statement::Node node = parseStatementNode();
  return {std::move(node), rangeFrom(start)};
}

/// statement := set | copy | return | exit | error | declaration | if | tell | try | repeat | considering
///            | with timeout | using terms from | expression
Statement::Node Parser::parseStatementNode() {
  if (word().isName("set") && !atSetCommand()) return parseSet();
  if (resolve().kind == Resolution::Kind::grammar) {
    std::string const& key = word().key;
    if (key == "copy") return parseCopy();
    if (key == "return") return parseReturn();
    if (key == "exit") return parseExit();
    if (key == "error") return parseRaiseError();
    if (key == "global") return parseDeclaration(tree::Declare::Scope::global);
    if (key == "local") return parseDeclaration(tree::Declare::Scope::local);
    if (key == "if") return parseIf();
    if (key == "tell") return parseTell();
    if (key == "try") return parseTry();
    if (key == "repeat") return parseRepeat();
    if (key == "script") return parseScriptStatement();
    if (key == "considering" || key == "ignoring") return parseConsidering();
    if (key == "with" && word(1).isName("timeout")) return parseWithTimeout();
    if (key == "with" && word(1).isName("transaction")) return parseWithTransaction();
    if (key == "end") {
      failExpected("end of script");
      return tree::ExitRepeat{};
    }
  }
  if (resolver_.matchPhrase(cursor_, "using terms from") > 0) return parseUsingTerms();
  return tree::Evaluate{parseExpression()};
}

/// Whether a command whose name begins with "set" stands here: "set eof f to 0", but not "set volume of x to 5".
bool Parser::atSetCommand() const {
  Resolution const resolution = resolve();
  if (resolution.kind != Resolution::Kind::term || resolution.meanings.command == nullptr) return false;
  Word const& next = word(resolution.words);
  bool const isOwned = next.isName("of") || next.isName("in") || next.isSymbol("'s") || next.isName("to");
  return !isOwned || (resolution.meanings.command->eventId == "seof"_code && next.isName("of"));
}

bool Parser::isPattern(Expression const& expression) {
  if (expression.as<tree::Variable>() != nullptr) return true;
  auto const* list = expression.as<tree::ListDisplay>();
  if (list != nullptr) {
    if (list->container != nullptr) return false;
    for (auto const& item : list->items) {
      if (!isPattern(*item)) return false;
    }
    return true;
  }
  auto const* record = expression.as<tree::RecordDisplay>();
  if (record == nullptr) return false;
  for (auto const& field : record->fields) {
    if (!isPattern(*field.second)) return false;
  }
  return true;
}

bool Parser::canBeSet(Expression const& target) const {
  if (auto const* list = target.as<tree::ListDisplay>()) {
    return std::ranges::all_of(list->items, [this](auto const& item) { return canBeSet(*item); });
  }
  if (auto const* record = target.as<tree::RecordDisplay>()) {
    return std::ranges::all_of(record->fields, [this](auto const& field) { return canBeSet(*field.second); });
  }
  return target.as<tree::Variable>() != nullptr || target.as<tree::PropertyOf>() != nullptr ||
         target.as<tree::ElementOf>() != nullptr || target.as<tree::InsertionPlace>() != nullptr;
}

/// set := "set" target "to" expression
Statement::Node Parser::parseSet() {
  advance();
  std::size_t const start = cursor_;
  ExpressionPointer target = parseOperand();
  if (!failed() && !canBeSet(*target)) {
    cursor_ = start;
    failExpected("variable name, property, etc.");
  }
  expectWord("to");
  ExpressionPointer value = parseExpression();
  return tree::Set{std::move(target), std::move(value)};
}

/// copy := "copy" expression "to" target
Statement::Node Parser::parseCopy() {
  std::size_t const first = cursor_;
  advance();
  // A copy is the value, not what another variable refers to.
  ExpressionPointer object = parseExpression();
  ExpressionPointer value = make(first, tree::Command{"copy", "ascr"_code, "copy"_code, std::move(object), {}});
  expectWord("to");
  std::size_t const start = cursor_;
  ExpressionPointer target = parseOperand();
  if (!failed() && !canBeSet(*target)) {
    cursor_ = start;
    failExpected("variable name, property, etc.");
  }
  return tree::Set{std::move(target), std::move(value)};
}

/// return := "return" [expression]
Statement::Node Parser::parseReturn() {
  advance();
  if (atStatementEnd() || word().isName("else")) return tree::Return{nullptr};
  return tree::Return{parseExpression()};
}

/// exit := "exit" ["repeat"]
Statement::Node Parser::parseExit() {
  if (loops_ == 0) {
    fail(errors::kExitOutsideRepeat, "“exit repeat” was found outside of a repeat statement.");
    return tree::ExitRepeat{};
  }
  advance();
  acceptWord("repeat");
  return tree::ExitRepeat{};
}

/// error := "error" [expression] ["number" expression] ["from" expression] ["to" expression]
///          ["partial" "result" expression]
Statement::Node Parser::parseRaiseError() {
  advance();
  tree::RaiseError raise;
  if (!atStatementEnd() && !word().isName("number") && !word().isName("from") && !word().isName("partial")) {
    raise.message = parseExpression();
  }
  while (!failed()) {
    if (acceptWord("number")) {
      raise.number = parseExpression();
    } else if (acceptWord("from")) {
      raise.offender = parseExpression();
    } else if (acceptWord("to")) {
      raise.expectedType = parseExpression();
    } else if (acceptPhrase("partial result")) {
      raise.partialResult = parseExpression();
    } else {
      break;
    }
  }
  return raise;
}

/// declaration := ("global" | "local") identifier {"," identifier}
Statement::Node Parser::parseDeclaration(tree::Declare::Scope scope) {
  advance();
  tree::Declare declare{scope, {}};
  do {
    if (resolve().kind != Resolution::Kind::identifier) {
      failExpected("variable name");
      break;
    }
    declare.slots.push_back(slotOf(word().kind == WordKind::name ? word().key : word().text));
    advance();
  } while (acceptSymbol(","));
  return declare;
}

}  // namespace morla::applescript
