#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "applescript/Applications.h"
#include "applescript/Scoped.h"
#include "applescript/SyntaxTree.h"
#include "applescript/TermResolver.h"

namespace morla::applescript {

/// Turns words into a tree, one method for each production, its grammar above it. The first failure counts: it moves
/// the cursor to the script's end, where no production finds anything, and whatever is returned then is thrown away. So
/// no method needs to ask whether another one succeeded.
class Parser {
 public:
  Parser(std::string_view source, Applications& applications, Limits const& limits);

  struct Result {
    std::optional<Script> script;
    std::optional<ScriptFailure> failure;
  };
  [[nodiscard]] Result parse();

 private:
  friend class Nesting;
  enum class Container { implied, script, target };

  // Parser.cpp: the cursor, and what messages say
  [[nodiscard]] Word const& word(std::size_t ahead = 0) const;
  void advance(std::size_t count = 1) { cursor_ = std::min(cursor_ + count, words_.size() - 1); }
  bool acceptSymbol(std::string_view symbol);
  bool acceptWord(std::string_view name);
  bool acceptPhrase(std::string_view phrase);
  void expectSymbol(std::string_view symbol);
  void expectWord(std::string_view name);
  [[nodiscard]] Resolution resolve(std::size_t ahead = 0) const;
  void fail(std::int64_t number, std::string message);
  void failExpected(std::string_view what);
  [[nodiscard]] std::string describe(std::size_t position) const;
  [[nodiscard]] bool failed() const { return failure_.has_value(); }
  [[nodiscard]] SourceRange rangeFrom(std::size_t firstWord) const;
  template <typename T>
  [[nodiscard]] ExpressionPointer make(std::size_t firstWord, T node) const {
    return std::make_unique<Expression>(Expression{std::move(node), rangeFrom(firstWord)});
  }
  [[nodiscard]] bool atStatementEnd() const;
  void expectStatementEnd();

  /// The handler whose words are being read, and the script objects that stand in it, with all names that they mention.
  struct RoutineScope {
    Routine* routine;
    std::vector<std::pair<Script*, std::set<std::string>>> scripts;
  };

  // ParserHandlers.cpp
  void findHandlerNames();
  [[nodiscard]] std::size_t slotOf(std::string const& key);
  void finish(RoutineScope& scope);
  void parseScriptBody(Script& script);
  void parseUse();
  [[nodiscard]] std::unique_ptr<Script> parseScriptObject(RoutineScope& creator);
  [[nodiscard]] Statement::Node parseScriptStatement();
  void parseHandler(Script& script);
  void parseHandlerParameters(Handler& handler);
  [[nodiscard]] HandlerParameter parseHandlerParameter(std::string label, bool mayHaveStandard = true);
  [[nodiscard]] std::string_view acceptPreposition();
  void parseProperty(Script& script);
  [[nodiscard]] bool atHandlerCall() const;
  [[nodiscard]] ExpressionPointer parseHandlerCall(std::size_t start, ExpressionPointer receiver);
  void parseLabelledArguments(tree::HandlerCall& call);
  [[nodiscard]] ExpressionPointer parseContinue(std::size_t start);

  // ParserStatements.cpp, ParserBlocks.cpp
  [[nodiscard]] Block parseBlock();
  [[nodiscard]] bool atBlockEnd() const;
  void endBlock(std::string_view name);
  [[nodiscard]] Statement parseStatement();
  [[nodiscard]] Statement::Node parseStatementNode();
  [[nodiscard]] bool atSetCommand() const;
  [[nodiscard]] Statement::Node parseSet();
  [[nodiscard]] Statement::Node parseCopy();
  [[nodiscard]] Statement::Node parseReturn();
  [[nodiscard]] Statement::Node parseExit();
  [[nodiscard]] Statement::Node parseRaiseError();
  [[nodiscard]] Statement::Node parseDeclaration(tree::Declare::Scope scope);
  [[nodiscard]] Statement::Node parseIf();
  [[nodiscard]] Statement::Node parseTell();
  [[nodiscard]] Statement::Node parseTry();
  [[nodiscard]] ExpressionPointer parseErrorNumber();
  [[nodiscard]] Statement::Node parseRepeat();
  [[nodiscard]] Statement::Node parseRepeatWith();
  [[nodiscard]] Statement::Node parseConsidering();
  [[nodiscard]] Statement::Node parseWithTimeout();
  [[nodiscard]] Statement::Node parseWithTransaction();
  [[nodiscard]] Statement::Node parseUsingTerms();
  [[nodiscard]] Block parseLoopBody();
  [[nodiscard]] std::uint32_t parseConsiderations();
  [[nodiscard]] Terminology const* termsOf(Expression const& target);
  [[nodiscard]] ExpressionPointer parseTarget();
  [[nodiscard]] static bool isPattern(Expression const& expression);
  [[nodiscard]] bool canBeSet(Expression const& target) const;

  // ParserExpressions.cpp
  [[nodiscard]] ExpressionPointer parseExpression();
  /// `first` is the first operand where it is read already.
  [[nodiscard]] ExpressionPointer parseChain(std::size_t level, ExpressionPointer first = nullptr);
  [[nodiscard]] ExpressionPointer parseNot();
  [[nodiscard]] ExpressionPointer parseEquality();
  [[nodiscard]] ExpressionPointer parseRelation();
  [[nodiscard]] ExpressionPointer parseCoercion();
  [[nodiscard]] bool atArithmetic() const;
  [[nodiscard]] ExpressionPointer parsePower(ExpressionPointer base = nullptr);
  [[nodiscard]] ExpressionPointer parseUnary();
  [[nodiscard]] ExpressionPointer parseTested();

  // ParserOperands.cpp
  [[nodiscard]] ExpressionPointer parseOperand();
  [[nodiscard]] ExpressionPointer parsePrimary();
  [[nodiscard]] ExpressionPointer parseGrammarWord();
  [[nodiscard]] ExpressionPointer parseIdentifier();
  [[nodiscard]] ExpressionPointer parseVariable();
  [[nodiscard]] ExpressionPointer parseBraces();
  [[nodiscard]] ExpressionPointer parseNumber();
  [[nodiscard]] ExpressionPointer parseRawData();
  [[nodiscard]] std::optional<std::pair<RecordKey, std::size_t>> recordKey() const;
  [[nodiscard]] std::optional<std::int64_t> durationHere() const;
  [[nodiscard]] bool startsExpression() const;

  // ParserReferences.cpp
  [[nodiscard]] ExpressionPointer parseTerm(Container container);
  [[nodiscard]] ExpressionPointer parseElement(Code type, Container container);
  [[nodiscard]] ExpressionPointer parseEvery(std::size_t start, Code type, Container container);
  [[nodiscard]] ExpressionPointer parseOrdinal(std::size_t start, tree::ElementOf::Form form, std::int64_t index);
  [[nodiscard]] ExpressionPointer parsePropertyOf(std::size_t start, RecordKey key, Container container);
  [[nodiscard]] ExpressionPointer parseContainer(Container container);
  [[nodiscard]] ExpressionPointer parseFilter();
  [[nodiscard]] ExpressionPointer parseSelector();
  [[nodiscard]] ExpressionPointer parseBound();
  [[nodiscard]] ExpressionPointer parseOwned(Container container);
  [[nodiscard]] ExpressionPointer parsePossessives(std::size_t start, ExpressionPointer owner);
  [[nodiscard]] ExpressionPointer parseApplication();
  [[nodiscard]] std::optional<Code> parseClassName();
  [[nodiscard]] bool selectorFollows(std::size_t ahead) const;
  [[nodiscard]] bool isSelector(std::size_t ahead) const;

  // ParserCommands.cpp
  [[nodiscard]] ExpressionPointer parseCommand(Resolution const& resolution);
  [[nodiscard]] ExpressionPointer parseRawEvent();
  [[nodiscard]] ExpressionPointer parseCount(std::size_t start);
  [[nodiscard]] std::vector<Dictionary::Parameter const*> parametersOf(Dictionary::Command const& command) const;
  [[nodiscard]] Dictionary::Parameter const* parameterHere(std::vector<Dictionary::Parameter const*> const& parameters,
                                                           std::size_t& words) const;
  void parseParameter(Dictionary::Parameter const& parameter, tree::Command& command);
  void parseFlags(std::vector<Dictionary::Parameter const*> const& parameters, tree::Command& command);

  std::size_t sourceSize_;
  Applications* applications_;
  Limits limits_;
  std::vector<Word> words_;
  TermResolver resolver_;
  std::size_t cursor_ = 0;
  std::size_t depth_ = 0;
  std::size_t loops_ = 0;
  RoutineScope* routine_ = nullptr;
  std::set<std::string> mentioned_;  ///< the names in the script object whose words are being read
  std::set<std::string> positionalHandlers_;
  std::set<std::string> labelledHandlers_;
  bool isNested_ = false;  ///< in a script object, which "end" ends
  bool isBound_ = false;   ///< a range's bound, whose container is the range's
  bool isInTest_ = false;  ///< in a whose clause, where terms are the tested object's
  bool endsAtAs_ = false;  ///< `as` ends the expression, for the same reason as `in`
  bool endsAtIn_ = false;  ///< `in` ends the expression: it names the command's next parameter
  std::optional<ScriptFailure> failure_;
};

/// One level deeper in the source; fails the parser where the limit is.
class Nesting {
 public:
  explicit Nesting(Parser& parser);
  ~Nesting();
  Nesting(Nesting const&) = delete;
  Nesting& operator=(Nesting const&) = delete;

 private:
  Parser* parser_;
};

}  // namespace morla::applescript
