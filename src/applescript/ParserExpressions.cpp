#include <array>

#include "applescript/ErrorNumbers.h"
#include "applescript/Parser.h"

namespace morla::applescript {
namespace {

struct ChainWord {
  std::string_view spelling;
  BinaryOperator operation;
};

/// Binary operators from the loosest to the tightest, as far as they associate to the left.
constexpr std::size_t kOr = 0;
constexpr std::size_t kAnd = 1;
constexpr std::size_t kConcatenate = 2;
constexpr std::size_t kProduct = 4;
constexpr std::array<std::array<ChainWord, 4>, 5> kLevels{{
    {{{"or", BinaryOperator::logicalOr}}},
    {{{"and", BinaryOperator::logicalAnd}}},
    {{{"&", BinaryOperator::concatenate}}},
    {{{"+", BinaryOperator::add}, {"-", BinaryOperator::subtract}}},
    {{{"*", BinaryOperator::multiply},
      {"/", BinaryOperator::divide},
      {"div", BinaryOperator::integerDivide},
      {"mod", BinaryOperator::modulo}}},
}};

enum class ComparisonLevel { equality, relation };
struct ComparisonWords {
  std::string_view phrase;
  ComparisonOperator operation;
  ComparisonLevel level;
  bool isNegated = false;
};
using enum ComparisonOperator;
using enum ComparisonLevel;
/// Where one phrase begins another one, the longer stands first.
constexpr auto kComparisons = std::to_array<ComparisonWords>({
    {"is greater than or equal to", greaterOrEqual, relation},
    {"is greater than or equal", greaterOrEqual, relation},
    {"is greater than", greater, relation},
    {"is less than or equal to", lessOrEqual, relation},
    {"is less than or equal", lessOrEqual, relation},
    {"is less than", less, relation},
    {"is not greater than or equal to", less, relation},
    {"is not greater than or equal", less, relation},
    {"is not greater than", lessOrEqual, relation},
    {"is not less than or equal to", greater, relation},
    {"is not less than or equal", greater, relation},
    {"is not less than", greaterOrEqual, relation},
    {"greater than or equal to", greaterOrEqual, relation},
    {"greater than or equal", greaterOrEqual, relation},
    {"greater than", greater, relation},
    {"less than or equal to", lessOrEqual, relation},
    {"less than or equal", lessOrEqual, relation},
    {"less than", less, relation},
    {"comes before", less, relation},
    {"comes after", greater, relation},
    {"does not come before", greaterOrEqual, relation},
    {"does not come after", lessOrEqual, relation},
    {"is not equal to", notEqual, equality},
    {"is not equal", notEqual, equality},
    {"is not contained by", isNotIn, equality},
    {"is not in", isNotIn, equality},
    {"is not", notEqual, equality},
    {"is equal to", equal, equality},
    {"is equal", equal, equality},
    {"is contained by", isIn, equality},
    {"is in", isIn, equality},
    {"is", equal, equality},
    {"equals", equal, equality},
    {"equal to", equal, equality},
    {"equal", equal, equality},
    {"does not equal", notEqual, equality},
    {"contains", contains, equality},
    {"contain", contains, equality},
    {"does not contain", notContains, equality},
    {"starts with", startsWith, equality},
    {"start with", startsWith, equality},
    {"begins with", startsWith, equality},
    {"begin with", startsWith, equality},
    {"ends with", endsWith, equality},
    {"end with", endsWith, equality},
    {"does not start with", startsWith, equality, true},
    {"does not begin with", startsWith, equality, true},
    {"does not end with", endsWith, equality, true},
});
struct ComparisonSymbol {
  std::string_view symbol;
  ComparisonOperator operation;
  ComparisonLevel level;
};
constexpr auto kComparisonSymbols = std::to_array<ComparisonSymbol>({
    {"=", equal, equality},
    {"/=", notEqual, equality},
    {"<", less, relation},
    {"<=", lessOrEqual, relation},
    {">", greater, relation},
    {">=", greaterOrEqual, relation},
});

struct FoundComparison {
  ComparisonOperator operation;
  std::size_t words;
  bool isNegated = false;
};

[[nodiscard]] std::optional<FoundComparison> findComparison(TermResolver const& resolver, Word const& word,
                                                            std::size_t position, ComparisonLevel level) {
  for (auto const& entry : kComparisonSymbols) {
    if (!word.isSymbol(entry.symbol)) continue;
    if (entry.level != level) return std::nullopt;
    return FoundComparison{entry.operation, 1};
  }
  if (word.kind != WordKind::name) return std::nullopt;
  for (auto const& entry : kComparisons) {
    std::size_t const words = resolver.matchPhrase(position, entry.phrase);
    if (words == 0) continue;
    if (entry.level != level) return std::nullopt;
    return FoundComparison{entry.operation, words, entry.isNegated};
  }
  return std::nullopt;
}

}  // namespace

/// expression := conjunction {"or" conjunction}
ExpressionPointer Parser::parseExpression() {
  Nesting const nesting(*this);
  return parseChain(kOr);
}

/// level := next {operator next}; the next level of "and" is `not`, of a product `power`.
ExpressionPointer Parser::parseChain(std::size_t level, ExpressionPointer first) {
  std::size_t const start = cursor_;
  auto const next = [this, level](ExpressionPointer operand) {
    if (level == kAnd) return parseNot();
    return level == kProduct ? parsePower(std::move(operand)) : parseChain(level + 1, std::move(operand));
  };
  first = next(std::move(first));
  tree::Chain chain;
  for (;;) {
    std::optional<BinaryOperator> found;
    for (ChainWord const& candidate : kLevels[level]) {
      if (candidate.spelling.empty()) continue;
      if (acceptSymbol(candidate.spelling) || acceptWord(candidate.spelling)) {
        found = candidate.operation;
        break;
      }
    }
    if (!found) break;
    chain.rest.emplace_back(*found, next(nullptr));
  }
  if (chain.rest.empty()) return first;
  chain.first = std::move(first);
  return make(start, std::move(chain));
}

/// not := "not" not | equality
ExpressionPointer Parser::parseNot() {
  if (!word().isName("not")) return parseEquality();
  Nesting const nesting(*this);
  std::size_t const start = cursor_;
  advance();
  ExpressionPointer operand = parseNot();
  return make(start, tree::Unary{UnaryOperator::logicalNot, std::move(operand)});
}

/// equality := relation [equality operator relation | "is" ["not"] "running"]
ExpressionPointer Parser::parseEquality() {
  std::size_t const start = cursor_;
  ExpressionPointer left = parseRelation();
  if (!isInTest_) {
    bool const isNegated = acceptPhrase("is not running");
    if (isNegated || acceptPhrase("is running")) {
      ExpressionPointer running = make(start, tree::IsRunning{std::move(left)});
      if (!isNegated) return running;
      return make(start, tree::Unary{UnaryOperator::logicalNot, std::move(running)});
    }
  }
  auto const found = findComparison(resolver_, word(), cursor_, ComparisonLevel::equality);
  if (!found) return left;
  advance(found->words);
  ExpressionPointer right = parseRelation();
  ExpressionPointer comparison = make(start, tree::Comparison{found->operation, std::move(left), std::move(right)});
  if (!found->isNegated) return comparison;
  return make(start, tree::Unary{UnaryOperator::logicalNot, std::move(comparison)});
}

/// relation := coercion [relation operator coercion]
ExpressionPointer Parser::parseRelation() {
  std::size_t const start = cursor_;
  ExpressionPointer left = parseCoercion();
  auto const found = findComparison(resolver_, word(), cursor_, ComparisonLevel::relation);
  if (!found) return left;
  advance(found->words);
  ExpressionPointer right = parseCoercion();
  return make(start, tree::Comparison{found->operation, std::move(left), std::move(right)});
}

/// Whether an operator that binds tighter than "as" follows: `x as integer + 1`.
bool Parser::atArithmetic() const {
  for (std::string_view const symbol : {"&", "+", "-", "*", "/", "^"}) {
    if (word().isSymbol(symbol)) return true;
  }
  return word().isName("div") || word().isName("mod");
}

/// coercion := concatenation {"as" ["the"] class [the rest of a concatenation]}
ExpressionPointer Parser::parseCoercion() {
  std::size_t const start = cursor_;
  ExpressionPointer operand = parseChain(kConcatenate);
  std::size_t coercions = 0;
  while (!endsAtAs_ && acceptWord("as")) {
    acceptWord("the");
    std::optional<Code> const type = parseClassName();
    if (!type) break;
    if (++coercions > limits_.depth) fail(errors::kNestedTooDeeply, "The script is nested too deeply.");
    operand = make(start, tree::Coerce{std::move(operand), *type});
    if (atArithmetic()) operand = parseChain(kConcatenate, std::move(operand));
  }
  return operand;
}

/// power := unary ["^" power]
ExpressionPointer Parser::parsePower(ExpressionPointer base) {
  std::size_t const start = cursor_;
  if (base == nullptr) base = parseUnary();
  if (!acceptSymbol("^")) return base;
  Nesting const nesting(*this);
  tree::Chain chain{std::move(base), {}};
  chain.rest.emplace_back(BinaryOperator::power, parsePower());
  return make(start, std::move(chain));
}

/// unary := ("-" | "+") unary | tested
ExpressionPointer Parser::parseUnary() {
  std::size_t const start = cursor_;
  bool const isNegative = acceptSymbol("-");
  if (!isNegative && !acceptSymbol("+")) return parseTested();
  Nesting const nesting(*this);
  ExpressionPointer operand = parseUnary();
  return make(start, tree::Unary{isNegative ? UnaryOperator::negate : UnaryOperator::plus, std::move(operand)});
}

/// tested := operand ["exists" | "does" "not" "exist"]
ExpressionPointer Parser::parseTested() {
  std::size_t const start = cursor_;
  ExpressionPointer operand = parseOperand();
  if (acceptPhrase("does not exist")) {
    ExpressionPointer exists = make(start, tree::Exists{std::move(operand)});
    return make(start, tree::Unary{UnaryOperator::logicalNot, std::move(exists)});
  }
  if (acceptWord("exists")) return make(start, tree::Exists{std::move(operand)});
  return operand;
}

}  // namespace morla::applescript
