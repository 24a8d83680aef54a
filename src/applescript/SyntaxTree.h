#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "applescript/AppleEvent.h"
#include "applescript/Interpreter.h"
#include "applescript/Value.h"

/// A compiled script: codes instead of words, and a range of the source on every node.
namespace morla::applescript {

struct TargetApplication;
struct Script;

/// Never null in a finished tree, unless a member says so.
struct Expression;
using ExpressionPointer = std::unique_ptr<Expression>;
struct Statement;
using Block = std::vector<Statement>;

enum class BinaryOperator {
  add,
  subtract,
  multiply,
  divide,
  integerDivide,
  modulo,
  power,
  concatenate,
  logicalAnd,
  logicalOr,
};
enum class UnaryOperator { negate, plus, logicalNot };
enum class ComparisonOperator {
  equal,
  notEqual,
  less,
  lessOrEqual,
  greater,
  greaterOrEqual,
  contains,
  notContains,
  isIn,
  isNotIn,
  startsWith,
  endsWith,
};

namespace tree {

struct Literal {
  Value value;
};
struct Variable {
  std::string key;   ///< lower case, unless it was written between bars
  std::string name;  ///< as written
  std::size_t slot;  ///< its place among the variables of the routine that it stands in
};
struct ListDisplay {
  std::vector<ExpressionPointer> items;
  ExpressionPointer container = nullptr;  ///< of `{name, id} of x`: what the items are relative to; null without it
};
struct RecordDisplay {
  std::vector<std::pair<RecordKey, ExpressionPointer>> fields;
};
struct Unary {
  UnaryOperator operation;
  ExpressionPointer operand;
};
/// `first op operand op operand …` of one precedence, evaluated from the left: a long sum is no deep tree.
struct Chain {
  ExpressionPointer first;
  std::vector<std::pair<BinaryOperator, ExpressionPointer>> rest;
};
struct Comparison {
  ComparisonOperator operation;
  ExpressionPointer left;
  ExpressionPointer right;
};
struct Coerce {
  ExpressionPointer operand;
  Code type;
};
struct IsRunning {
  ExpressionPointer application;
};
/// What a reference is relative to when the script names no container.
struct ImpliedTarget {};
/// `it`: the target of the enclosing tell, as an object.
struct It {};
/// `me`: the script object whose handler runs.
struct Me {};
/// `AppleScript`, `current application`.
struct TheLanguage {};
/// Inside a whose clause: the object that is being tested.
struct Examined {};
/// `result`
struct LastResult {};
struct PropertyOf {
  RecordKey key;
  ExpressionPointer container;
};
struct ElementOf {
  enum class Form {
    indexOrName,  ///< a number or a text, known when it is evaluated
    index,
    name,
    id,
    range,  ///< from `selector` to `upper`
    every,
    first,
    last,
    middle,
    some,
    test,    ///< every one for which `selector` holds
    before,  ///< the one before `container`
    after,
  };
  Code type;
  Form form;
  ExpressionPointer selector;  ///< null where the form has none
  ExpressionPointer upper;     ///< null but for a range
  ExpressionPointer container;
};
/// `beginning of X`, `end of X`, `before X`, `after X`
struct InsertionPlace {
  Code position;
  ExpressionPointer object;
};
struct ApplicationNamed {
  ApplicationReference::Kind kind;
  ExpressionPointer text;
  std::shared_ptr<TargetApplication> known;  ///< when the text is a literal; else null
};
struct PosixFile {
  ExpressionPointer path;
};
/// `date "7:45 PM" of base`: what the text leaves out is the base's.
struct RelativeDate {
  ExpressionPointer text;
  ExpressionPointer base;
};
struct ReferenceTo {
  ExpressionPointer object;
};
struct Count {
  ExpressionPointer operand;
};
struct Exists {
  ExpressionPointer operand;
};
/// `get X`: what an expression statement does anyway.
struct Command {
  std::string name;
  Code eventClass;
  Code eventId;
  ExpressionPointer direct;  ///< null when there is none
  std::vector<std::pair<Code, ExpressionPointer>> parameters;
};
struct HandlerCall {
  std::string key;
  std::string name;
  ExpressionPointer receiver;  ///< null: the tell's target, then the script
  std::vector<ExpressionPointer> arguments;
  ExpressionPointer direct = nullptr;  ///< of a handler with labels
  std::vector<std::pair<std::string, ExpressionPointer>> labelled = {};
  bool isLabelled = false;
  bool isContinue = false;  ///< `continue f()`: the parent's handler
};

}  // namespace tree

struct Expression {
  using Node =
      std::variant<tree::Literal, tree::Variable, tree::ListDisplay, tree::RecordDisplay, tree::Unary, tree::Chain,
                   tree::Comparison, tree::Coerce, tree::IsRunning, tree::ImpliedTarget, tree::It, tree::Me,
                   tree::TheLanguage, tree::Examined, tree::LastResult, tree::PropertyOf, tree::ElementOf,
                   tree::InsertionPlace, tree::ApplicationNamed, tree::PosixFile, tree::RelativeDate, tree::ReferenceTo,
                   tree::Count, tree::Exists, tree::Command, tree::HandlerCall>;
  Node node;
  SourceRange range;

  template <typename T>
  [[nodiscard]] T const* as() const {
    return std::get_if<T>(&node);
  }
  template <typename T>
  [[nodiscard]] T* as() {
    return std::get_if<T>(&node);
  }
};

namespace tree {

struct Evaluate {
  ExpressionPointer expression;
};
struct Set {
  ExpressionPointer target;
  ExpressionPointer value;
};
struct If {
  std::vector<std::pair<ExpressionPointer, Block>> branches;
  Block otherwise;
};
struct Tell {
  ExpressionPointer target;
  bool isApplication;  ///< the target is an application itself: entering asks for permission
  Block body;
};
struct Try {
  Block body;
  Block onError;
  // What `on error` names; each may be null. A literal instead of a variable: only such an error is caught.
  ExpressionPointer message;
  ExpressionPointer number;
  ExpressionPointer offender;
  ExpressionPointer expectedType;
  ExpressionPointer partialResult;
};
struct RepeatForever {
  Block body;
};
struct RepeatTimes {
  ExpressionPointer count;
  Block body;
};
struct RepeatWhile {
  enum class Sense { whileTrue, untilTrue } sense;
  ExpressionPointer condition;
  Block body;
};
struct RepeatInList {
  ExpressionPointer variable;
  ExpressionPointer list;
  Block body;
};
struct RepeatFromTo {
  ExpressionPointer variable;
  ExpressionPointer from;
  ExpressionPointer to;
  ExpressionPointer by;  ///< null: 1
  Block body;
};
struct ExitRepeat {};
struct Return {
  ExpressionPointer value;  ///< null: none
};
struct RaiseError {
  ExpressionPointer message;
  ExpressionPointer number;
  ExpressionPointer offender;
  ExpressionPointer expectedType;
  ExpressionPointer partialResult;
};
struct Considering {
  std::uint32_t considered = 0;  ///< bits of Considerations that the block clears
  std::uint32_t ignored = 0;     ///< bits that it sets
  /// Stands among those bits for what is no business of the application: whether its responses count.
  static constexpr std::uint32_t kApplicationResponses = 0x8000'0000U;
  Block body;
};
struct WithTimeout {
  ExpressionPointer seconds;
  Block body;
};
struct Declare {
  enum class Scope { global, local } scope;
  std::vector<std::size_t> slots;
};
/// `script name … end script` in a handler: makes a new script object each time.
struct DefineScript {
  std::unique_ptr<Script> script;  ///< never null
  ExpressionPointer variable;      ///< null when the script has no name
};
/// `using terms from`: the compiler's business, so only its body is left.
struct Group {
  Block body;
};

}  // namespace tree

struct Statement {
  using Node = std::variant<tree::Evaluate, tree::Set, tree::If, tree::Tell, tree::Try, tree::RepeatForever,
                            tree::RepeatTimes, tree::RepeatWhile, tree::RepeatInList, tree::RepeatFromTo,
                            tree::ExitRepeat, tree::Return, tree::RaiseError, tree::Considering, tree::WithTimeout,
                            tree::Declare, tree::DefineScript, tree::Group>;
  Node node;
  SourceRange range;
};

/// The names that a handler mentions, each with its place among the handler's variables.
struct Routine {
  std::map<std::string, std::size_t, std::less<>> slots;
};

struct HandlerParameter {
  std::string label;           ///< of a parameter with a label; "" of a positional or the direct one
  ExpressionPointer pattern;   ///< a pattern, as `set` has them
  std::optional<Code> type;    ///< the class it is coerced to
  ExpressionPointer standard;  ///< what it is when the call leaves it out; may be null
};

struct Handler {
  std::string key;
  std::string name;
  bool isLabelled = false;
  std::vector<HandlerParameter> parameters = {};
  Routine routine = {};
  Block body = {};
  SourceRange range = {};
};

/// What a script has from the start: a property, or a script object in it.
struct ScriptMember {
  RecordKey key;
  ExpressionPointer value;         ///< null for a script object
  std::unique_ptr<Script> script;  ///< null for a property
};

/// A whole script, or a script object within one.
struct Script {
  ~Script();
  Script();
  Script(Script&&) noexcept;
  Script& operator=(Script&&) noexcept;

  std::string key;  ///< "" of the whole script and of one without a name
  std::string name;
  ExpressionPointer parent;  ///< may be null
  std::vector<ScriptMember> members;
  Routine initializers;  ///< the names in the members' values
  std::map<std::string, Handler, std::less<>> handlers;
  Handler run;  ///< written out or implied
  bool isRunImplied = true;
  bool usesCreator = false;  ///< a handler of it mentions a name of the handler that it stands in
};

}  // namespace morla::applescript
