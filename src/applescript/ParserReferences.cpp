#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"
#include "applescript/Units.h"

namespace morla::applescript {

using tree::ElementOf;

/// term := command | application | "POSIX file" operand | ("alias" | "file") operand | element | property
///       | plural … | enumerator | class
ExpressionPointer Parser::parseTerm(Container container) {
  std::size_t const start = cursor_;
  Resolution const resolution = resolve();
  Meanings const& meanings = resolution.meanings;
  bool const hasSelector = selectorFollows(resolution.words);
  if (meanings.type == "capp"_code && (hasSelector || word(1).isName("id"))) return parseApplication();
  Terminology const* own = resolver_.applicationTerms();
  bool const isFileOfOurs = meanings.type == "file"_code && !(own != nullptr && own->hasClass("file"_code));
  if (meanings.type == "ldt "_code && hasSelector) {
    advance(resolution.words);
    ExpressionPointer text = parseSelector();
    bool const isRelative = acceptWord("of") || (!endsAtIn_ && acceptWord("in")) || acceptPhrase("relative to");
    if (!isRelative) return make(start, tree::Coerce{std::move(text), "ldt "_code});
    ExpressionPointer base = parseOperand();
    return make(start, tree::RelativeDate{std::move(text), std::move(base)});
  }
  bool const isOrdinaryFile = meanings.type == "psxf"_code || meanings.type == "alis"_code || isFileOfOurs;
  if (isOrdinaryFile && hasSelector) {
    advance(resolution.words);
    ExpressionPointer path = parseSelector();
    if (meanings.type == "psxf"_code) return make(start, tree::PosixFile{std::move(path)});
    return make(start, tree::Coerce{std::move(path), meanings.type == "file"_code ? "furl"_code : *meanings.type});
  }
  if (meanings.command != nullptr && container == Container::implied) return parseCommand(resolution);
  bool const isRelative = word(resolution.words).isName("before") || word(resolution.words).isName("after");
  if ((meanings.type || meanings.pluralType) && (hasSelector || isRelative)) {
    advance(resolution.words);
    return parseElement(meanings.type ? *meanings.type : *meanings.pluralType, container);
  }
  if (word().isName("number") && word(1).isName("of") && !meanings.property) {
    advance();
    return parseCount(start);
  }
  if (meanings.property) {
    advance(resolution.words);
    return parsePropertyOf(start, *meanings.property, container);
  }
  if (meanings.pluralType) {
    advance(resolution.words);
    return parseEvery(start, *meanings.pluralType, container);
  }
  advance(resolution.words);
  if (meanings.enumerator) return make(start, tree::Literal{Enumerator{*meanings.enumerator}});
  if (meanings.type) {
    // "text of x" is a property with the name of a class; alone, the class itself.
    if (word().isName("of") || word().isSymbol("'s")) return parsePropertyOf(start, *meanings.type, container);
    return make(start, tree::Literal{TypeCode{*meanings.type}});
  }
  cursor_ = start;
  failExpected("expression");
  return make(start, tree::Literal{});
}

/// What may stand between a class and its selector counts only when a selector follows: `id` alone is a property.
bool Parser::selectorFollows(std::size_t ahead) const {
  Word const& next = word(ahead);
  if (next.isName("id") && word(ahead + 1).isSymbol("{")) return true;
  if (next.isName("id") || next.isName("index") || next.isName("named")) return isSelector(ahead + 1);
  if (next.isName("from")) return isSelector(ahead + 1) || resolve(ahead + 1).meanings.type.has_value();
  return isSelector(ahead);
}

/// selector := ["-"] number | text | identifier | "(" expression ")"
bool Parser::isSelector(std::size_t ahead) const {
  Word const& next = word(ahead);
  switch (next.kind) {
    case WordKind::integer:
    case WordKind::real:
    case WordKind::text:
    case WordKind::pipedName:
      return true;
    case WordKind::ordinal:
      return false;
    case WordKind::symbol:
      return next.isSymbol("(") || (next.isSymbol("-") && word(ahead + 1).kind == WordKind::integer);
    case WordKind::name: {
      std::size_t const position = std::min(cursor_ + ahead, words_.size() - 1);
      // These two phrases are no identifiers although their words are.
      if (resolver_.matchPhrase(position, "missing value") > 0) return false;
      if (resolver_.matchPhrase(position, "partial result") > 0) return false;
      return resolve(ahead).kind == Resolution::Kind::identifier;
    }
    case WordKind::chevron:
    case WordKind::lineEnd:
    case WordKind::end:
    case WordKind::error:
      return false;
  }
  return false;
}

ExpressionPointer Parser::parseSelector() {
  Nesting const nesting(*this);
  std::size_t const start = cursor_;
  if (acceptSymbol("-")) {
    ExpressionPointer operand = parseSelector();
    return make(start, tree::Unary{UnaryOperator::negate, std::move(operand)});
  }
  if (word().kind == WordKind::name || word().kind == WordKind::pipedName) {
    if (resolve().kind != Resolution::Kind::identifier) return parsePrimary();
    return parseVariable();
  }
  return parsePrimary();
}

/// bound := selector | class selector | "beginning" | "end"
ExpressionPointer Parser::parseBound() {
  std::size_t const start = cursor_;
  if (acceptWord("beginning")) return make(start, tree::Literal{std::int64_t{1}});
  if (acceptWord("end")) return make(start, tree::Literal{std::int64_t{-1}});
  Resolution const resolution = resolve();
  if (resolution.kind == Resolution::Kind::grammar && !word().isName("my") && !word().isName("its")) {
    Scoped<bool> const alone(isBound_, true);
    return parseGrammarWord();
  }
  if (resolution.meanings.type && isSelector(resolution.words)) {
    advance(resolution.words);
    ExpressionPointer selector = parseSelector();
    ExpressionPointer nobody = make(start, tree::ImpliedTarget{});
    return make(start, ElementOf{*resolution.meanings.type, ElementOf::Form::indexOrName, std::move(selector), nullptr,
                                 std::move(nobody)});
  }
  return parseSelector();
}

/// element := class ( ["index"] selector | ["named"] selector | "id" selector | selector ("thru" | "through") selector
///                  | "from" selector "to" selector | ("before" | "after") operand ) ["of" operand]
ExpressionPointer Parser::parseElement(Code type, Container container) {
  std::size_t const start = cursor_ - 1;
  if (word().isName("before") || word().isName("after")) {
    auto const form = word().isName("before") ? ElementOf::Form::before : ElementOf::Form::after;
    advance();
    ExpressionPointer neighbour = parseOperand();
    return make(start, ElementOf{type, form, nullptr, nullptr, std::move(neighbour)});
  }
  auto form = ElementOf::Form::indexOrName;
  bool const isFromTo = word().isName("from");
  if (isFromTo) {
    form = ElementOf::Form::range;
    advance();
  } else if (acceptWord("id")) {
    form = ElementOf::Form::id;
  } else if (acceptWord("index")) {
    form = ElementOf::Form::index;
  } else if (acceptWord("named")) {
    form = ElementOf::Form::name;
  }
  ExpressionPointer selector = isFromTo ? parseBound() : parseSelector();
  ExpressionPointer upper;
  if (isFromTo) {
    if (!acceptWord("thru") && !acceptWord("through")) expectWord("to");
    upper = parseBound();
  } else if (acceptWord("thru") || acceptWord("through")) {
    form = ElementOf::Form::range;
    upper = parseBound();
  }
  bool const isText = type == "cha "_code || type == "ctxt"_code;
  if (isText && form == ElementOf::Form::id && !word().isName("of") && !word().isName("in")) {
    return make(start, tree::Command{"character id", "ascr"_code, "chid"_code, std::move(selector), {}});
  }
  ExpressionPointer owner = parseContainer(container);
  return make(start, ElementOf{type, form, std::move(selector), std::move(upper), std::move(owner)});
}

/// filter := ("whose" | "where" | "that") expression
ExpressionPointer Parser::parseFilter() {
  if (!acceptWord("whose") && !acceptWord("where") && !acceptWord("that")) return nullptr;
  Scoped<bool> const inTest(isInTest_, true);
  return parseExpression();
}

/// every := ["every"] class [filter] ["of" operand] [filter]
ExpressionPointer Parser::parseEvery(std::size_t start, Code type, Container container) {
  ExpressionPointer filter = parseFilter();
  ExpressionPointer owner = parseContainer(container);
  if (filter == nullptr) filter = parseFilter();
  auto const form = filter == nullptr ? ElementOf::Form::every : ElementOf::Form::test;
  return make(start, ElementOf{type, form, std::move(filter), nullptr, std::move(owner)});
}

/// ordinal := word class [filter] ["of" operand] [filter]
ExpressionPointer Parser::parseOrdinal(std::size_t start, ElementOf::Form form, std::int64_t index) {
  advance();
  std::optional<Code> const type = parseClassName();
  if (!type) return make(start, tree::Literal{});
  ExpressionPointer all = parseEvery(start, *type, isInTest_ ? Container::target : Container::implied);
  if (failed()) return all;
  auto* every = all->as<ElementOf>();
  ExpressionPointer owner = every->form == ElementOf::Form::test ? std::move(all) : std::move(every->container);
  ExpressionPointer selector;
  if (form == ElementOf::Form::index) selector = make(start, tree::Literal{index});
  return make(start, ElementOf{*type, form, std::move(selector), nullptr, std::move(owner)});
}

/// property := name ["of" operand]
ExpressionPointer Parser::parsePropertyOf(std::size_t start, RecordKey key, Container container) {
  ExpressionPointer owner = parseContainer(container);
  return make(start, tree::PropertyOf{std::move(key), std::move(owner)});
}

ExpressionPointer Parser::parseContainer(Container container) {
  std::size_t const start = cursor_;
  if (isBound_) return make(start, tree::ImpliedTarget{});
  if (acceptWord("of") || (!endsAtIn_ && acceptWord("in"))) return parseOperand();
  if (container == Container::script) return make(start, tree::Me{});
  if (isInTest_) return make(start, tree::Examined{});
  if (container == Container::target) return make(start, tree::It{});
  return make(start, tree::ImpliedTarget{});
}

/// owned := call | term | identifier, of the script (`my`) or of the target (`its`)
ExpressionPointer Parser::parseOwned(Container container) {
  std::size_t const start = cursor_;
  if (word().isSymbol("(")) return parsePrimary();
  if (atHandlerCall()) {
    return parseHandlerCall(start, container == Container::script ? make(start, tree::Me{}) : make(start, tree::It{}));
  }
  Resolution const resolution = resolve();
  if (resolution.kind == Resolution::Kind::term) return parseTerm(container);
  if (resolution.kind != Resolution::Kind::identifier) {
    failExpected("identifier");
    return make(start, tree::Literal{});
  }
  Word const name = word();
  advance();
  return parsePropertyOf(start, name.kind == WordKind::name ? name.key : name.text, container);
}

/// {"'s" (term | identifier)}
ExpressionPointer Parser::parsePossessives(std::size_t start, ExpressionPointer owner) {
  std::size_t count = 0;
  while (acceptSymbol("'s")) {
    if (++count > limits_.depth) fail(errors::kNestedTooDeeply, "The script is nested too deeply.");
    if (atHandlerCall()) {
      owner = parseHandlerCall(start, std::move(owner));
      continue;
    }
    Resolution const resolution = resolve();
    if (resolution.kind == Resolution::Kind::identifier) {
      std::string key = word().kind == WordKind::name ? word().key : word().text;
      advance();
      owner = make(start, tree::PropertyOf{std::move(key), std::move(owner)});
      continue;
    }
    ExpressionPointer part;
    if (resolution.kind == Resolution::Kind::grammar) {
      part = parseGrammarWord();
    } else if (resolution.kind == Resolution::Kind::term) {
      part = parseTerm(Container::target);
    } else {
      failExpected("property, element or identifier");
    }
    if (failed()) break;
    // The part was read as if nobody owned it; what it was relative to gives way to the owner.
    ExpressionPointer* place = &part;
    for (;;) {
      if (auto* property = (*place)->as<tree::PropertyOf>()) {
        place = &property->container;
      } else if (auto* element = (*place)->as<ElementOf>()) {
        place = &element->container;
      } else {
        break;
      }
    }
    bool const isOpen = (*place)->as<tree::It>() != nullptr || (*place)->as<tree::ImpliedTarget>() != nullptr ||
                        (*place)->as<tree::Examined>() != nullptr;
    if (place == &part || !isOpen) {
      failExpected("property, element or identifier");
      break;
    }
    *place = std::move(owner);
    part->range = rangeFrom(start);
    owner = std::move(part);
  }
  return owner;
}

/// application := "application" ["id"] selector
ExpressionPointer Parser::parseApplication() {
  std::size_t const start = cursor_;
  advance();
  auto const kind = acceptWord("id") ? ApplicationReference::Kind::identifier : ApplicationReference::Kind::name;
  ExpressionPointer text = parseSelector();
  std::shared_ptr<TargetApplication> known;
  if (!failed()) {
    if (auto const* literal = text->as<tree::Literal>()) {
      if (auto const* name = literal->value.as<std::string>()) known = applications_->named({kind, *name});
    }
  }
  return make(start, tree::ApplicationNamed{kind, std::move(text), std::move(known)});
}

/// class := the name of a class, singular or plural
std::optional<Code> Parser::parseClassName() {
  if (acceptWord("script")) return "scpt"_code;
  Resolution const resolution = resolve();
  Meanings const& meanings = resolution.meanings;
  std::optional<Code> const type = meanings.type ? meanings.type : meanings.pluralType;
  if (!type) {
    // Elsewhere the word may be a variable's: "set miles to 5".
    for (Unit const& unit : allUnits()) {
      if (acceptPhrase(lowercaseKey(unit.name))) return unit.code;
    }
    failExpected("class name");
    return std::nullopt;
  }
  advance(resolution.words);
  return type;
}

}  // namespace morla::applescript
