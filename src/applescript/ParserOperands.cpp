#include <array>
#include <charconv>
#include <numbers>

#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"
#include "applescript/TextElements.h"

namespace morla::applescript {

/// operand := primary {"'s" (property | element)}
ExpressionPointer Parser::parseOperand() {
  Nesting const nesting(*this);
  std::size_t const start = cursor_;
  return parsePossessives(start, parsePrimary());
}

/// primary := number | text | "(" expression ")" | list | record | keyword operand | term | identifier
ExpressionPointer Parser::parsePrimary() {
  std::size_t const start = cursor_;
  switch (word().kind) {
    case WordKind::integer:
    case WordKind::real:
      return parseNumber();
    case WordKind::ordinal: {
      std::int64_t index = 0;
      std::from_chars(word().text.data(), word().text.data() + word().text.size(), index);
      return parseOrdinal(start, tree::ElementOf::Form::index, index);
    }
    case WordKind::text: {
      std::string text = word().text;
      advance();
      return make(start, tree::Literal{std::move(text)});
    }
    case WordKind::symbol:
      if (word().isSymbol("{")) return parseBraces();
      if (acceptSymbol("(")) {
        Scoped<bool> const inside(endsAtIn_, false);
        Scoped<bool> const coercing(endsAtAs_, false);
        ExpressionPointer inner = parseExpression();
        expectSymbol(")");
        return inner;
      }
      break;
    case WordKind::name:
    case WordKind::pipedName:
    case WordKind::chevron: {
      if (acceptPhrase("current application")) return make(start, tree::TheLanguage{});
      if (acceptPhrase("missing value")) return make(start, tree::Literal{Value::missing()});
      if (acceptPhrase("a reference to") || acceptPhrase("a ref to") || acceptPhrase("reference to") ||
          acceptPhrase("ref to")) {
        ExpressionPointer object = parseOperand();
        return make(start, tree::ReferenceTo{std::move(object)});
      }
      if (atHandlerCall()) return parseHandlerCall(start, nullptr);
      if (word().kind == WordKind::chevron && word().text.starts_with("event ")) return parseRawEvent();
      if (word().kind == WordKind::chevron && word().text.starts_with("data ")) return parseRawData();
      if (std::optional<std::int64_t> const seconds = durationHere()) {
        advance();
        return make(start, tree::Literal{*seconds});
      }
      Resolution const resolution = resolve();
      if (resolution.kind == Resolution::Kind::grammar) return parseGrammarWord();
      if (resolution.kind == Resolution::Kind::term)
        return parseTerm(isInTest_ ? Container::target : Container::implied);
      if (resolution.kind == Resolution::Kind::identifier) return parseIdentifier();
      break;
    }
    case WordKind::lineEnd:
    case WordKind::end:
    case WordKind::error:
      break;
  }
  failExpected("expression");
  return make(start, tree::Literal{});
}

/// raw data := «data typeHEX», of which texts are understood
ExpressionPointer Parser::parseRawData() {
  std::size_t const start = cursor_;
  std::string_view digits = std::string_view(word().text).substr(std::string_view("data ").size());
  std::string_view const type = digits.substr(0, 4);
  digits.remove_prefix(type.size());
  std::string bytes;
  bool isHexadecimal = digits.size() % 2 == 0;
  for (std::size_t i = 0; isHexadecimal && i < digits.size(); i += 2) {
    unsigned byte = 0;
    auto const [end, problem] = std::from_chars(digits.data() + i, digits.data() + i + 2, byte, 16);
    isHexadecimal = problem == std::errc() && end == digits.data() + i + 2;
    bytes += static_cast<char>(byte);
  }
  std::optional<std::string> text;
  if (type == "utf8" || type == "TEXT") text = std::move(bytes);
  if (type == "utxt" || type == "ut16") text = textOfUtf16(bytes);
  if (!isHexadecimal || !text) failExpected("expression");
  advance();
  return make(start, tree::Literal{text.value_or("")});
}

ExpressionPointer Parser::parseNumber() {
  std::size_t const start = cursor_;
  std::string const digits = word().text;
  bool const isReal = word().kind == WordKind::real;
  advance();
  constexpr std::int64_t kLargestInteger = 536870911;
  if (!isReal) {
    std::int64_t integer = 0;
    auto const [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), integer);
    if (problem == std::errc() && integer <= kLargestInteger) return make(start, tree::Literal{integer});
  }
  double real = 0;
  auto const [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), real);
  if (problem != std::errc()) fail(errors::kNumberTooLarge, "The number is too large.");
  return make(start, tree::Literal{real});
}

/// keyword operand := "the" operand | "true" | "false" | "return" | "it" | "me" | "my" owned | "its" owned
///                  | "get" expression | "applescript" | "every" … | ordinal … | place "of" operand
ExpressionPointer Parser::parseGrammarWord() {
  Nesting const nesting(*this);
  using Form = tree::ElementOf::Form;
  std::size_t const start = cursor_;
  std::string const& key = word().key;
  static constexpr auto kOrdinals = std::to_array<std::string_view>(
      {"first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth", "ninth", "tenth"});
  for (std::size_t i = 1; i < kOrdinals.size(); ++i) {
    if (key == kOrdinals[i]) return parseOrdinal(start, Form::index, static_cast<std::int64_t>(i) + 1);
  }
  if (key == "first" || key == "front") return parseOrdinal(start, Form::first, 1);
  if (key == "last" || key == "back") return parseOrdinal(start, Form::last, -1);
  if (key == "middle") return parseOrdinal(start, Form::middle, 0);
  if (key == "some") return parseOrdinal(start, Form::some, 0);
  static constexpr auto kPlaces = std::to_array<std::pair<std::string_view, std::string_view>>(
      {{"beginning", "bgng"}, {"end", "end "}, {"before", "befo"}, {"after", "afte"}});
  for (auto const& [name, code] : kPlaces) {
    if (key != name) continue;
    advance();
    if (name == "beginning" || name == "end") {
      if (!acceptWord("of")) expectWord("in");
    }
    ExpressionPointer object = parseOperand();
    return make(start, tree::InsertionPlace{Code(code), std::move(object)});
  }
  if (acceptWord("the")) return parsePrimary();
  if (acceptWord("true")) return make(start, tree::Literal{true});
  if (acceptWord("false")) return make(start, tree::Literal{false});
  if (acceptWord("return")) return make(start, tree::Literal{"\r"});
  if (acceptWord("applescript")) return make(start, tree::TheLanguage{});
  if (acceptWord("me")) return make(start, tree::Me{});
  if (key == "continue") return parseContinue(start);
  if (acceptWord("script")) return make(start, tree::Literal{TypeCode{"scpt"_code}});
  if (acceptWord("it")) {
    if (isInTest_) return make(start, tree::Examined{});
    return make(start, tree::It{});
  }
  if (acceptWord("my")) return parseOwned(Container::script);
  if (acceptWord("its")) return parseOwned(Container::target);
  if (acceptWord("get")) return parseExpression();
  if (acceptWord("every")) {
    std::optional<Code> const type = parseClassName();
    if (!type) return make(start, tree::Literal{});
    return parseEvery(start, *type, isInTest_ ? Container::target : Container::implied);
  }
  failExpected("expression");
  return make(start, tree::Literal{});
}

/// `hours`, unless it is the property of a date.
std::optional<std::int64_t> Parser::durationHere() const {
  static constexpr auto kDurations = std::to_array<std::pair<std::string_view, std::int64_t>>(
      {{"minutes", 60}, {"hours", 3600}, {"days", 86400}, {"weeks", 604800}});
  for (auto const& [key, seconds] : kDurations) {
    if (word().isName(key) && !word(1).isName("of")) return seconds;
  }
  return std::nullopt;
}

/// identifier operand := constant | "result" | call | identifier ["of" operand]
ExpressionPointer Parser::parseIdentifier() {
  std::size_t const start = cursor_;
  Word const name = word();
  if (name.kind == WordKind::name) {
    static constexpr auto kTexts = std::to_array<std::pair<std::string_view, std::string_view>>(
        {{"tab", "\t"}, {"linefeed", "\n"}, {"space", " "}, {"quote", "\""}});
    for (auto const& [key, text] : kTexts) {
      if (acceptWord(key)) return make(start, tree::Literal{std::string(text)});
    }
    if (acceptWord("pi")) return make(start, tree::Literal{std::numbers::pi});
    if (acceptWord("result")) return make(start, tree::LastResult{});
  }
  // Only a record or the script itself has properties that no dictionary knows.
  if (word(1).isName("of")) {
    std::string key = name.kind == WordKind::name ? name.key : name.text;
    advance();
    return parsePropertyOf(start, std::move(key), Container::implied);
  }
  return parseVariable();
}

ExpressionPointer Parser::parseVariable() {
  acceptWord("the");
  std::size_t const start = cursor_;
  Word const name = word();
  if (resolve().kind != Resolution::Kind::identifier) {
    failExpected("variable name");
    return make(start, tree::Literal{});
  }
  advance();
  std::string key = name.kind == WordKind::name ? name.key : name.text;
  std::size_t const slot = slotOf(key);
  return make(start, tree::Variable{std::move(key), name.text, slot});
}

std::optional<std::pair<RecordKey, std::size_t>> Parser::recordKey() const {
  Resolution const resolution = resolve();
  if (resolution.words == 0 || !word(resolution.words).isSymbol(":")) return std::nullopt;
  if (resolution.kind == Resolution::Kind::identifier) {
    return std::pair{RecordKey(word().kind == WordKind::name ? word().key : word().text), resolution.words};
  }
  if (resolution.meanings.property) return std::pair{RecordKey(*resolution.meanings.property), resolution.words};
  if (resolution.meanings.type) return std::pair{RecordKey(*resolution.meanings.type), resolution.words};
  return std::nullopt;
}

/// braces := "{" [expression {"," expression}] "}" ["of" operand] | "{" key ":" expression {"," key ":" expression} "}"
ExpressionPointer Parser::parseBraces() {
  Nesting const nesting(*this);
  std::size_t const start = cursor_;
  Scoped<bool> const inside(endsAtIn_, false);
  Scoped<bool> const coercing(endsAtAs_, false);
  expectSymbol("{");
  if (recordKey()) {
    tree::RecordDisplay record;
    do {
      std::optional<std::pair<RecordKey, std::size_t>> key = recordKey();
      if (!key) {
        failExpected("property name");
        break;
      }
      advance(key->second + 1);
      record.fields.emplace_back(std::move(key->first), parseExpression());
    } while (acceptSymbol(","));
    expectSymbol("}");
    return make(start, std::move(record));
  }
  tree::ListDisplay list;
  if (!word().isSymbol("}")) {
    do {
      if (recordKey()) failExpected("expression");
      list.items.push_back(parseExpression());
    } while (acceptSymbol(","));
  }
  expectSymbol("}");
  if (acceptWord("of")) list.container = parseOperand();
  return make(start, std::move(list));
}

bool Parser::startsExpression() const {
  switch (word().kind) {
    case WordKind::integer:
    case WordKind::real:
    case WordKind::ordinal:
    case WordKind::text:
    case WordKind::pipedName:
    case WordKind::chevron:
      return true;
    case WordKind::symbol:
      return word().isSymbol("(") || word().isSymbol("{") || word().isSymbol("-") || word().isSymbol("+");
    case WordKind::lineEnd:
    case WordKind::end:
    case WordKind::error:
      return false;
    case WordKind::name:
      break;
  }
  if (resolve().kind != Resolution::Kind::grammar) return true;
  static constexpr auto kStarters = std::to_array<std::string_view>(
      {"the",       "true",   "false", "return", "applescript", "me",      "it",     "my",    "its",
       "get",       "every",  "first", "second", "third",       "fourth",  "fifth",  "sixth", "seventh",
       "eighth",    "ninth",  "tenth", "front",  "last",        "back",    "middle", "some",  "end",
       "beginning", "before", "after", "not",    "ref",         "continue"});
  for (std::string_view const starter : kStarters) {
    if (word().key == starter) return true;
  }
  return false;
}

}  // namespace morla::applescript
