#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "applescript/RunState.h"
#include "applescript/ScriptError.h"
#include "applescript/ScriptObjects.h"
#include "applescript/SyntaxTree.h"

namespace morla::applescript {

/// Walks the tree. An expression that names an object of an application is *located* (a specifier is built, nothing is
/// sent) where the object itself is meant, and *evaluated* (one `get` is sent) where its value is. Script errors leave
/// every method as ScriptError.
class Evaluator {
 public:
  /// Both must outlive this.
  Evaluator(Script const& script, RunState& state);

  /// The script's value; none when its last statement has none.
  [[nodiscard]] std::optional<Value> run();

  /// Where the evaluator was when an error left it.
  [[nodiscard]] SourceRange range() const { return range_; }

 private:
  friend class Level;

  enum class Flow { next, exitRepeat, returned };
  struct Outcome {
    Flow flow = Flow::next;
    std::optional<Datum> value;
  };
  /// A datum, and whether it is a specifier whose value nobody has asked for yet.
  struct Place {
    Datum datum;
    bool isPending = false;
  };
  /// Variables; one without a value is declared, no more.
  using Variables = std::map<std::string, std::optional<Datum>, std::less<>>;

  // EvaluatorStatements.cpp
  [[nodiscard]] Outcome execute(Block const& block);
  [[nodiscard]] Outcome execute(Statement const& statement);
  [[nodiscard]] Outcome run(tree::Evaluate const& node);
  [[nodiscard]] Outcome run(tree::Set const& node);
  [[nodiscard]] Outcome run(tree::If const& node);
  [[nodiscard]] Outcome run(tree::Tell const& node);
  [[nodiscard]] Outcome run(tree::Try const& node);
  [[nodiscard]] Outcome run(tree::RepeatForever const& node);
  [[nodiscard]] Outcome run(tree::RepeatTimes const& node);
  [[nodiscard]] Outcome run(tree::RepeatWhile const& node);
  [[nodiscard]] Outcome run(tree::RepeatInList const& node);
  [[nodiscard]] Outcome run(tree::RepeatFromTo const& node);
  [[nodiscard]] Outcome run(tree::ExitRepeat const& node);
  [[nodiscard]] Outcome run(tree::Return const& node);
  [[nodiscard]] Outcome run(tree::RaiseError const& node);
  [[nodiscard]] Outcome run(tree::Considering const& node);
  [[nodiscard]] Outcome run(tree::WithTimeout const& node);
  [[nodiscard]] Outcome run(tree::Declare const& node);
  [[nodiscard]] Outcome run(tree::Group const& node);
  /// One turn of a loop; false when the loop is over, and `outcome` is what it leaves behind.
  [[nodiscard]] bool turn(Block const& body, Outcome& outcome);
  void enter(Datum const& target);
  void assign(Expression const* variable, Datum value);

  // EvaluatorVariables.cpp
  void setTarget(Expression const& target, Datum value);
  void setProperty(tree::PropertyOf const& target, Datum value);
  void setElement(tree::ElementOf const& target, Datum value);
  void setVariable(std::string const& key, Datum value);
  void setDelimiters(Datum const& value);
  [[nodiscard]] Datum variable(std::string const& key, std::string const& name) const;
  [[nodiscard]] Datum copied(Datum const& datum, std::size_t depth = 0);

  // EvaluatorExpressions.cpp
  [[nodiscard]] Datum evaluate(Expression const& expression);
  [[nodiscard]] Place locate(Expression const& expression);
  [[nodiscard]] Datum locateValue(Expression const& expression) { return locate(expression).datum; }
  [[nodiscard]] Place at(tree::Literal const& node);
  [[nodiscard]] Place at(tree::Variable const& node);
  [[nodiscard]] Place at(tree::ListDisplay const& node);
  [[nodiscard]] Place at(tree::RecordDisplay const& node);
  [[nodiscard]] Place at(tree::Unary const& node);
  [[nodiscard]] Place at(tree::Chain const& node);
  [[nodiscard]] Place at(tree::Comparison const& node);
  [[nodiscard]] Place at(tree::Coerce const& node);
  [[nodiscard]] Place at(tree::IsRunning const& node);
  [[nodiscard]] Place at(tree::ImpliedTarget const& node);
  [[nodiscard]] Place at(tree::It const& node);
  [[nodiscard]] Place at(tree::Me const& node);
  [[nodiscard]] Place at(tree::Examined const& node);
  [[nodiscard]] Place at(tree::LastResult const& node);
  [[nodiscard]] Place at(tree::InsertionPlace const& node);
  [[nodiscard]] Place at(tree::ApplicationNamed const& node);
  [[nodiscard]] Place at(tree::PosixFile const& node);
  [[nodiscard]] Place at(tree::HandlerCall const& node);
  [[nodiscard]] Datum call(Handler const& handler, std::vector<Datum> arguments);
  void bind(Expression const& pattern, Datum const& value);
  [[nodiscard]] bool condition(Expression const& expression);
  /// The operand's value: what is an object still is fetched, since operators work on values.
  [[nodiscard]] Datum operand(Expression const& expression);

  // EvaluatorReferences.cpp
  [[nodiscard]] Place at(tree::PropertyOf const& node);
  [[nodiscard]] Place at(tree::ElementOf const& node);
  [[nodiscard]] Place at(tree::ReferenceTo const& node);
  [[nodiscard]] Datum containerOf(Expression const& container, bool isForLanguage);
  [[nodiscard]] Datum elementSpecifier(tree::ElementOf const& node, ApplicationObject const& container);
  [[nodiscard]] Value specifierWithin(tree::ElementOf const& node, Value container);
  [[nodiscard]] Value rangeBound(Code type, Expression const& bound);
  [[nodiscard]] ElementRequest request(tree::ElementOf const& node);
  [[nodiscard]] Datum object(ApplicationObject const& container, Specifier specifier);
  [[nodiscard]] Value containerValue(ApplicationObject const& container) const;
  [[nodiscard]] Value testOf(Expression const& expression);
  [[nodiscard]] Value testOperand(Expression const& expression);
  [[nodiscard]] std::optional<Value> testedObject(Expression const& expression);

  // EvaluatorCommands.cpp
  [[nodiscard]] Place at(tree::Count const& node);
  [[nodiscard]] Place at(tree::Exists const& node);
  [[nodiscard]] Place at(tree::Command const& node);
  [[nodiscard]] Datum shell(tree::Command const& node);
  [[nodiscard]] Datum offset(tree::Command const& node);
  [[nodiscard]] Expression const& parameter(tree::Command const& node, Code code) const;

  // EvaluatorEvents.cpp
  [[nodiscard]] Datum fetched(Datum const& datum);
  [[nodiscard]] Datum send(TargetApplication& application, AppleEvent event);
  [[nodiscard]] Datum send(TargetApplication& application, Code eventClass, Code eventId, Value direct,
                           std::vector<std::pair<Code, Value>> parameters = {});
  [[noreturn]] void raiseReply(std::shared_ptr<TargetApplication> const& application, EventError const& reply,
                               AppleEvent const& event);
  [[nodiscard]] Value toValue(Datum const& datum, std::size_t depth = 0);
  [[nodiscard]] Datum toDatum(Value const& value, std::shared_ptr<TargetApplication> const& application,
                              std::size_t depth = 0);
  void requireLocated(TargetApplication& application);

  Script const* script_;
  RunState* state_;
  Variables globals_;
  Variables* locals_ = nullptr;
  std::optional<Datum> lastResult_;
  Datum target_ = ScriptItself{};
  std::chrono::milliseconds timeout_ = kDefaultReplyTimeout;
  std::size_t depth_ = 0;
  SourceRange range_;
};

/// One level deeper in the evaluation.
class Level {
 public:
  explicit Level(Evaluator& evaluator);
  ~Level() { --evaluator_->depth_; }
  Level(Level const&) = delete;
  Level& operator=(Level const&) = delete;

 private:
  Evaluator* evaluator_;
};

}  // namespace morla::applescript
