#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "applescript/RunState.h"
#include "applescript/ScriptError.h"
#include "applescript/ScriptInstance.h"
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

  /// The script's value; none when its last statement has none. `arguments` go to its run handler.
  [[nodiscard]] std::optional<Datum> run(std::vector<std::string> const& arguments);
  /// A script's value as it leaves the interpreter; none for what only a running script can hold.
  [[nodiscard]] std::optional<Value> exported(Datum const& result);

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
  /// A handler that was found for a call, and where.
  struct Found {
    Handler const* handler = nullptr;  ///< null: there is none
    ScriptReference home;              ///< where it is written
    ScriptReference me;                ///< for whom it runs
  };

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
  [[nodiscard]] Outcome run(tree::DefineScript const& node);
  [[nodiscard]] Outcome run(tree::Group const& node);
  /// One turn of a loop; false when the loop is over, and `outcome` is what it leaves behind.
  [[nodiscard]] bool turn(Block const& body, Outcome& outcome);
  void enter(Datum const& target);
  void assign(Expression const* variable, Datum value);
  [[nodiscard]] std::optional<Datum> extended(tree::Set const& node);

  // EvaluatorVariables.cpp
  void setTarget(Expression const& target, Datum value);
  void setProperty(tree::PropertyOf const& target, Datum value);
  void setElement(tree::ElementOf const& target, Datum value);
  void setVariable(tree::Variable const& variable, Datum value);
  void setDelimiters(Datum const& value);
  [[nodiscard]] Datum* storageOf(tree::Variable const& variable);
  [[nodiscard]] Datum variable(tree::Variable const& variable);
  [[nodiscard]] Datum copied(Datum const& datum, std::size_t depth = 0);

  // EvaluatorExpressions.cpp
  [[nodiscard]] Datum evaluate(Expression const& expression);
  [[nodiscard]] Datum needed(Expression const& expression);
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
  [[nodiscard]] Place at(tree::RelativeDate const& node);
  void bind(Expression const& pattern, Datum const& value);
  [[nodiscard]] Place at(tree::TheLanguage const& node);
  [[nodiscard]] bool condition(Expression const& expression);
  /// The operand's value: what is an object still is fetched, since operators work on values.
  [[nodiscard]] Datum operand(Expression const& expression);

  // EvaluatorScripts.cpp
  [[nodiscard]] ScriptReference instantiate(Script const& code, ScriptReference const& outer,
                                            ActivationReference const& creator);
  [[nodiscard]] Outcome runScript(ScriptReference const& script, std::vector<Datum> const& arguments);
  [[nodiscard]] Place at(tree::HandlerCall const& node);
  [[nodiscard]] Found findHandler(ScriptReference const& receiver, std::string_view key) const;
  [[nodiscard]] Found findHandler(tree::HandlerCall const& node);
  [[nodiscard]] Datum call(Found const& found, tree::HandlerCall const& node);
  [[nodiscard]] Datum call(Found const& found, std::vector<Datum> const& arguments);
  [[nodiscard]] std::vector<Datum> argumentsFor(Handler const& handler, tree::HandlerCall const& node);
  void bindParameters(Handler const& handler, std::vector<Datum> const& arguments);
  [[nodiscard]] std::optional<Datum> propertyOfScript(ScriptReference const& script, RecordKey const& key);

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
  /// A command to a script object, which may have a handler for it; nothing when it is for an application.
  [[nodiscard]] std::optional<Datum> scriptCommand(tree::Command const& node, Datum const& direct);
  [[nodiscard]] Expression const* optionalParameter(tree::Command const& node, Code code) const;

  // EvaluatorAdditions.cpp
  [[nodiscard]] static bool isAddition(tree::Command const& node);
  [[nodiscard]] Datum addition(tree::Command const& node);
  [[nodiscard]] Datum directOf(tree::Command const& node);
  [[nodiscard]] Datum randomNumber(tree::Command const& node);
  [[nodiscard]] Datum rounded(tree::Command const& node);
  [[nodiscard]] Datum characterWithId(Datum const& id);
  [[nodiscard]] Datum pathTo(tree::Command const& node);
  [[nodiscard]] Datum runScriptText(tree::Command const& node);
  [[nodiscard]] Datum loadScript(tree::Command const& node);
  [[nodiscard]] Script const& compiled(Datum const& source);
  [[nodiscard]] Datum clipboardCommand(tree::Command const& node);
  [[nodiscard]] Datum systemInformation();
  void wait(tree::Command const& node);
  [[nodiscard]] Datum coercedAsAsked(tree::Command const& node, Datum const& value);

  // EvaluatorFiles.cpp
  [[nodiscard]] static bool isFileCommand(tree::Command const& node);
  [[nodiscard]] Datum fileCommand(tree::Command const& node);
  [[nodiscard]] HostFiles& files();
  [[nodiscard]] std::string pathOf(Datum const& file);
  [[nodiscard]] OpenFiles::File fileOf(Datum const& file, std::optional<std::int64_t>& number);
  [[nodiscard]] std::size_t sizeOf(std::string const& path);
  [[nodiscard]] Datum openForAccess(tree::Command const& node);
  void closeAccess(tree::Command const& node);
  [[nodiscard]] std::size_t offsetIn(Expression const& place, std::size_t size);
  [[nodiscard]] std::size_t lengthToRead(tree::Command const& node, std::string const& path, std::size_t start,
                                         std::size_t size);
  [[nodiscard]] std::size_t stopAtText(tree::Command const& node, std::string& bytes);
  [[nodiscard]] Datum readFile(tree::Command const& node);
  [[nodiscard]] Datum readValue(tree::Command const& node, std::string const& bytes);
  void writeFile(tree::Command const& node);
  void setFileSize(tree::Command const& node);
  [[nodiscard]] Datum informationAbout(tree::Command const& node);
  [[nodiscard]] Datum folderNames(tree::Command const& node);
  [[nodiscard]] std::string scriptText(Datum const& file);

  // EvaluatorCommands.cpp
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
  std::vector<std::unique_ptr<Script const>> ownScripts_;  ///< what `run script` and `load script` compiled
  std::size_t ownScriptBytes_ = 0;                         ///< their texts together
  ScriptReference top_;
  ActivationReference current_;
  std::optional<Datum> lastResult_;
  Datum target_ = Language{};
  std::chrono::milliseconds timeout_ = kDefaultReplyTimeout;
  std::size_t depth_ = 0;
  std::uintptr_t stackBase_;  ///< where the stack was when the run began
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
