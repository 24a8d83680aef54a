#include <charconv>

#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"

namespace morla::applescript {

[[nodiscard]] static Block blockOf(Statement statement) {
  Block block;
  block.push_back(std::move(statement));
  return block;
}

/// if := "if" expression ["then"] EOL block {"else" "if" expression ["then"] EOL block} ["else" EOL block] "end" ["if"]
///     | "if" expression "then" statement ["else" statement]
Statement::Node Parser::parseIf() {
  advance();
  tree::If result;
  ExpressionPointer condition = parseExpression();
  bool const hasThen = acceptWord("then");
  if (!atStatementEnd()) {
    if (!hasThen) failExpected("“then” or end of line");
    result.branches.emplace_back(std::move(condition), blockOf(parseStatement()));
    if (acceptWord("else")) result.otherwise = blockOf(parseStatement());
    return result;
  }
  result.branches.emplace_back(std::move(condition), parseBlock());
  while (acceptWord("else")) {
    if (!acceptWord("if")) {
      expectStatementEnd();
      result.otherwise = parseBlock();
      break;
    }
    ExpressionPointer next = parseExpression();
    acceptWord("then");
    expectStatementEnd();
    result.branches.emplace_back(std::move(next), parseBlock());
  }
  endBlock("if");
  return result;
}

/// Known only where the innermost object of the reference is an application written out.
Terminology const* Parser::termsOf(Expression const& target) {
  Expression const* object = &target;
  for (;;) {
    if (auto const* property = object->as<tree::PropertyOf>()) {
      object = property->container.get();
    } else if (auto const* element = object->as<tree::ElementOf>()) {
      object = element->container.get();
    } else {
      break;
    }
  }
  if (object->as<tree::Me>() != nullptr || object->as<tree::TheLanguage>() != nullptr) return nullptr;
  auto const* application = object->as<tree::ApplicationNamed>();
  if (application == nullptr || application->known == nullptr) return resolver_.applicationTerms();
  if (!applications_->locate(*application->known)) {
    ApplicationReference const& reference = application->known->reference;
    std::string const form = reference.kind == ApplicationReference::Kind::name ? "application" : "application id";
    // The range is that of the application, not of whatever follows.
    fail(errors::kNoSuchObject, "Can’t get " + form + " \"" + reference.text + "\".");
    failure_->range = object->range;
    return nullptr;
  }
  return application->known->terms.get();
}

ExpressionPointer Parser::parseTarget() {
  return parseOperand();
}

/// tell := "tell" reference ("to" statement | EOL block "end" ["tell"])
Statement::Node Parser::parseTell() {
  advance();
  ExpressionPointer target = parseTarget();
  if (failed()) return tree::ExitRepeat{};
  bool const isApplication = target->as<tree::ApplicationNamed>() != nullptr;
  Terminology const* outer = resolver_.applicationTerms();
  resolver_.setApplicationTerms(termsOf(*target));
  Block body;
  if (acceptWord("to")) {
    body = blockOf(parseStatement());
    // Here, while the words that follow still mean what they mean to the target.
    if (!word().isName("else")) expectStatementEnd();
  } else {
    expectStatementEnd();
    body = parseBlock();
    endBlock("tell");
  }
  resolver_.setApplicationTerms(outer);
  return tree::Tell{std::move(target), isApplication, std::move(body)};
}

/// using terms := "using" "terms" "from" application EOL block "end" ["using" "terms" "from"]
Statement::Node Parser::parseUsingTerms() {
  advance(3);
  ExpressionPointer target = parseTarget();
  if (failed()) return tree::ExitRepeat{};
  Terminology const* outer = resolver_.applicationTerms();
  resolver_.setApplicationTerms(termsOf(*target));
  expectStatementEnd();
  Block body = parseBlock();
  expectWord("end");
  acceptPhrase("using terms from");
  resolver_.setApplicationTerms(outer);
  return tree::Group{std::move(body)};
}

/// error number := variable | ["-"] number
ExpressionPointer Parser::parseErrorNumber() {
  bool const isLiteral = word().kind == WordKind::integer || word().isSymbol("-");
  if (!isLiteral) return parseVariable();
  std::size_t const start = cursor_;
  bool const isNegative = acceptSymbol("-");
  std::int64_t number = 0;
  if (word().kind != WordKind::integer) failExpected("number");
  std::from_chars(word().text.data(), word().text.data() + word().text.size(), number);
  advance();
  return make(start, tree::Literal{isNegative ? -number : number});
}

/// try := "try" EOL block ["on" "error" [variable | text] {"number" error number | "from" variable | "to" variable
///        | "partial" "result" variable} EOL block] "end" ["try" | "error"]
Statement::Node Parser::parseTry() {
  advance();
  expectStatementEnd();
  tree::Try result;
  result.body = parseBlock();
  if (acceptPhrase("on error")) {
    while (!failed() && !atStatementEnd()) {
      if (acceptWord("number")) {
        result.number = parseErrorNumber();
      } else if (acceptWord("from")) {
        result.offender = parseVariable();
      } else if (acceptWord("to")) {
        result.expectedType = parseVariable();
      } else if (acceptPhrase("partial result")) {
        result.partialResult = parseVariable();
      } else if (result.message == nullptr) {
        result.message = word().kind == WordKind::text ? parsePrimary() : parseVariable();
      } else {
        expectStatementEnd();
      }
    }
    result.onError = parseBlock();
  }
  expectWord("end");
  if (!atStatementEnd() && !acceptWord("error")) expectWord("try");
  return result;
}

Block Parser::parseLoopBody() {
  Scoped<std::size_t> const loop(loops_, loops_ + 1);
  expectStatementEnd();
  Block body = parseBlock();
  endBlock("repeat");
  return body;
}

/// repeat := "repeat" ( "" | "with" … | ("while" | "until") expression | expression ["times"] ) EOL block "end"
/// ["repeat"]
Statement::Node Parser::parseRepeat() {
  advance();
  if (atStatementEnd()) return tree::RepeatForever{parseLoopBody()};
  if (acceptWord("with")) return parseRepeatWith();
  bool const isWhile = acceptWord("while");
  if (isWhile || acceptWord("until")) {
    ExpressionPointer condition = parseExpression();
    auto const sense = isWhile ? tree::RepeatWhile::Sense::whileTrue : tree::RepeatWhile::Sense::untilTrue;
    return tree::RepeatWhile{sense, std::move(condition), parseLoopBody()};
  }
  ExpressionPointer count = parseExpression();
  acceptWord("times");
  return tree::RepeatTimes{std::move(count), parseLoopBody()};
}

/// … := variable ("in" expression | "from" expression "to" expression ["by" expression])
Statement::Node Parser::parseRepeatWith() {
  ExpressionPointer variable = parseVariable();
  if (acceptWord("in")) {
    ExpressionPointer list = parseExpression();
    return tree::RepeatInList{std::move(variable), std::move(list), parseLoopBody()};
  }
  if (!acceptWord("from")) failExpected("“in” or “from”");
  ExpressionPointer from = parseExpression();
  expectWord("to");
  ExpressionPointer to = parseExpression();
  ExpressionPointer by = acceptWord("by") ? parseExpression() : nullptr;
  return tree::RepeatFromTo{std::move(variable), std::move(from), std::move(to), std::move(by), parseLoopBody()};
}

/// considering := ("considering" attributes ["but" "ignoring" attributes]
///               | "ignoring" attributes ["but" "considering" attributes]) EOL block "end" ["considering" | "ignoring"]
Statement::Node Parser::parseConsidering() {
  tree::Considering result;
  std::string const first = word().key;
  std::string const second = first == "considering" ? "ignoring" : "considering";
  advance();
  std::uint32_t const here = parseConsiderations();
  std::uint32_t const others = acceptPhrase("but " + second) ? parseConsiderations() : 0;
  result.considered = first == "considering" ? here : others;
  result.ignored = first == "considering" ? others : here;
  expectStatementEnd();
  result.body = parseBlock();
  endBlock(first);
  return result;
}

/// attributes := attribute {("," | "and") attribute}
std::uint32_t Parser::parseConsiderations() {
  std::uint32_t bits = 0;
  do {
    if (acceptWord("case")) {
      bits |= Considerations::kIgnoreCase;
    } else if (acceptWord("diacriticals")) {
      bits |= Considerations::kIgnoreDiacriticals;
    } else if (acceptWord("hyphens")) {
      bits |= Considerations::kIgnoreHyphens;
    } else if (acceptWord("punctuation")) {
      bits |= Considerations::kIgnorePunctuation;
    } else if (acceptPhrase("white space")) {
      bits |= Considerations::kIgnoreWhiteSpace;
    } else if (acceptPhrase("numeric strings")) {
      bits |= Considerations::kConsiderNumericStrings;
    } else if (acceptPhrase("application responses")) {
      bits |= tree::Considering::kApplicationResponses;
    } else {
      failExpected("“case”, “diacriticals”, “hyphens”, “punctuation”, “white space” or “numeric strings”");
    }
  } while (!failed() && (acceptSymbol(",") || acceptWord("and")));
  return bits;
}

/// with transaction := "with" "transaction" [expression] EOL block "end" ["transaction"]
Statement::Node Parser::parseWithTransaction() {
  advance(2);
  if (!atStatementEnd()) static_cast<void>(parseExpression());
  expectStatementEnd();
  Block body = parseBlock();
  endBlock("transaction");
  return tree::Group{std::move(body)};
}

/// with timeout := "with" "timeout" ["of"] expression ("second" | "seconds") EOL block "end" ["timeout"]
Statement::Node Parser::parseWithTimeout() {
  advance(2);
  acceptWord("of");
  ExpressionPointer seconds = parseExpression();
  if (!acceptWord("seconds") && !acceptWord("second")) failExpected("“seconds”");
  expectStatementEnd();
  Block body = parseBlock();
  endBlock("timeout");
  return tree::WithTimeout{std::move(seconds), std::move(body)};
}

}  // namespace morla::applescript
