#include "applescript/Parser.h"

#include "applescript/ErrorNumbers.h"

namespace morla::applescript {

Nesting::Nesting(Parser& parser) : parser_(&parser) {
  if (++parser_->depth_ > parser_->limits_.depth) {
    parser_->fail(errors::kNestedTooDeeply, "The script is nested too deeply.");
  }
}

Nesting::~Nesting() {
  --parser_->depth_;
}

Parser::Parser(std::string_view source, Applications& applications, Limits const& limits)
    : sourceSize_(source.size()),
      applications_(&applications),
      limits_(limits),
      words_(lex(source.size() > limits.sourceBytes ? std::string_view() : source)),
      resolver_(words_) {}

Parser::Result Parser::parse() {
  if (sourceSize_ > limits_.sourceBytes) fail(errors::kValueTooLarge, "The script is too large.");
  findHandlerNames();
  Script script;
  parseScriptBody(script);
  if (failure_) return {std::nullopt, std::move(failure_)};
  return {std::move(script), std::nullopt};
}

// --- The cursor

Word const& Parser::word(std::size_t ahead) const {
  return words_[std::min(cursor_ + ahead, words_.size() - 1)];
}

bool Parser::acceptSymbol(std::string_view symbol) {
  if (!word().isSymbol(symbol)) return false;
  advance();
  return true;
}

bool Parser::acceptWord(std::string_view name) {
  if (!word().isName(name)) return false;
  advance();
  return true;
}

bool Parser::acceptPhrase(std::string_view phrase) {
  std::size_t const count = resolver_.matchPhrase(cursor_, phrase);
  advance(count);
  return count > 0;
}

void Parser::expectSymbol(std::string_view symbol) {
  if (!acceptSymbol(symbol)) failExpected("“" + std::string(symbol) + "”");
}

void Parser::expectWord(std::string_view name) {
  if (!acceptWord(name)) failExpected("“" + std::string(name) + "”");
}

Resolution Parser::resolve(std::size_t ahead) const {
  return resolver_.resolve(std::min(cursor_ + ahead, words_.size() - 1));
}

SourceRange Parser::rangeFrom(std::size_t firstWord) const {
  std::size_t const start = words_[firstWord].range.start;
  if (cursor_ <= firstWord) return {start, 0};
  SourceRange const& last = words_[cursor_ - 1].range;
  return {start, last.start + last.length - start};
}

// --- Failures

void Parser::fail(std::int64_t number, std::string message) {
  if (!failure_) failure_ = ScriptFailure{number, message, message, std::nullopt, word().range};
  cursor_ = words_.size() - 1;
}

void Parser::failExpected(std::string_view what) {
  fail(errors::kUnexpectedWord, "Expected " + std::string(what) + " but found " + describe(cursor_) + ".");
}

std::string Parser::describe(std::size_t position) const {
  Word const& found = words_[position];
  switch (found.kind) {
    case WordKind::lineEnd:
      return "end of line";
    case WordKind::end:
      return "end of script";
    case WordKind::text:
      return "“\"”";
    case WordKind::integer:
    case WordKind::real:
    case WordKind::ordinal:
      return "number";
    case WordKind::symbol:
      return "“" + found.text + "”";
    case WordKind::error:
      return found.text;
    case WordKind::name:
    case WordKind::pipedName:
    case WordKind::chevron:
      break;
  }
  Resolution const resolution = resolver_.resolve(position);
  if (resolution.kind == Resolution::Kind::grammar) return "“" + found.key + "”";
  if (resolution.kind != Resolution::Kind::term) return "identifier";
  if (resolution.meanings.command != nullptr) return "command name";
  if (resolution.meanings.property) return "property";
  if (resolution.meanings.type) return "class name";
  if (resolution.meanings.pluralType) return "plural class name";
  return "application constant";
}

bool Parser::atStatementEnd() const {
  return word().kind == WordKind::lineEnd || word().kind == WordKind::end;
}

void Parser::expectStatementEnd() {
  if (atStatementEnd()) return;
  Resolution const resolution = resolve();
  bool const isTerm = resolution.kind == Resolution::Kind::term && resolution.meanings.command == nullptr;
  if (isTerm && cursor_ > 0 && describe(cursor_ - 1) == "identifier") {
    std::string const found = describe(cursor_);
    std::string const article = found == "application constant" ? "An " : "A ";
    fail(errors::kCannotGoAfter, article + found + " can’t go after this identifier.");
    return;
  }
  failExpected("end of line, etc.");
}

}  // namespace morla::applescript
