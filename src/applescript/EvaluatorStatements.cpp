#include <cmath>

#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/ErrorTexts.h"
#include "applescript/Evaluator.h"
#include "applescript/Operators.h"
#include "applescript/Scoped.h"
#include "applescript/TextElements.h"

namespace morla::applescript {

/// Where the stack stands; it grows downwards on every machine that this runs on.
[[nodiscard]] static std::uintptr_t stackPosition() {
  return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

Level::Level(Evaluator& evaluator) : evaluator_(&evaluator) {
  Limits const& limits = evaluator_->state_->limits;
  std::uintptr_t const position = stackPosition();
  bool const isStackFull = position < evaluator_->stackBase_ && evaluator_->stackBase_ - position > limits.stackBytes;
  if (++evaluator_->depth_ > limits.evaluationDepth || isStackFull) {
    --evaluator_->depth_;  // this destructor will not run
    raise(errors::kNestedTooDeeply, "Stack overflow.");
  }
}

Evaluator::Evaluator(Script const& script, RunState& state)
    : script_(&script), state_(&state), stackBase_(stackPosition()) {}

Evaluator::Outcome Evaluator::execute(Block const& block) {
  Outcome last;
  for (Statement const& statement : block) {
    last = {};  // the value of the statement before is nobody's any more
    last = execute(statement);
    if (last.flow != Flow::next) break;
  }
  return last;
}

Evaluator::Outcome Evaluator::execute(Statement const& statement) {
  Level const level(*this);
  state_->spend();
  range_ = statement.range;
  return std::visit([this](auto const& node) { return run(node); }, statement.node);
}

Evaluator::Outcome Evaluator::run(tree::Evaluate const& node) {
  Datum value = evaluate(*node.expression);
  if (value.isNull()) {
    lastResult_.reset();
    return {};
  }
  lastResult_ = value;
  return {Flow::next, std::move(value)};
}

/// `set l to l & …` where nothing but the variable has the list any more: the list grows in place, so that a loop of
/// such statements takes linear time. Nothing when the statement is another one.
std::optional<Datum> Evaluator::extended(tree::Set const& node) {
  auto const* name = node.target->as<tree::Variable>();
  auto const* chain = node.value->as<tree::Chain>();
  if (name == nullptr || chain == nullptr || chain->rest.front().first != BinaryOperator::concatenate) {
    return std::nullopt;
  }
  auto const* first = chain->first->as<tree::Variable>();
  if (first == nullptr || first->slot != name->slot) return std::nullopt;
  Datum const* const storage = storageOf(*name);
  auto const* held = storage == nullptr ? nullptr : storage->as<ListReference>();
  if (held == nullptr) return std::nullopt;
  ListReference const list = *held;
  std::vector<Datum> parts;
  for (auto const& term : chain->rest) parts.push_back(dereferenced(evaluate(*term.second)));
  lastResult_.reset();  // which this statement replaces
  Datum const* const now = storageOf(*name);
  bool const isSame = now != nullptr && now->as<ListReference>() != nullptr && *now->as<ListReference>() == list;
  constexpr long kOwners = 2;  // the variable and this function
  if (isSame && list.use_count() == kOwners) {
    for (Datum const& part : parts) appendTo(*list, part, *state_);
    return list;
  }
  Datum value = list;
  for (Datum const& part : parts) value = applied(BinaryOperator::concatenate, value, part, *state_);
  setVariable(*name, value);
  return value;
}

Evaluator::Outcome Evaluator::run(tree::Set const& node) {
  if (std::optional<Datum> list = extended(node)) {
    lastResult_ = list;
    return {Flow::next, std::move(list)};
  }
  Datum value = evaluate(*node.value);
  if (value.isNull()) {
    // A handler that returns nothing leaves the variable without a value.
    auto const* const variable = node.target->as<tree::Variable>();
    if (variable == nullptr) raise(errors::kNoResult, errorText(errors::kNoResult));
    setVariable(*variable, {});
    lastResult_.reset();
    return {};
  }
  setTarget(*node.target, value);
  lastResult_ = value;
  return {Flow::next, std::move(value)};
}

Evaluator::Outcome Evaluator::run(tree::If const& node) {
  for (auto const& [test, block] : node.branches) {
    if (condition(*test)) return execute(block);
  }
  return execute(node.otherwise);
}

/// Before a script talks to an application it asks whether it may.
void Evaluator::enter(Datum const& target) {
  auto const* object = target.as<ApplicationObject>();
  if (object == nullptr) return;
  auto const* current = target_.as<ApplicationObject>();
  bool const isSame = current != nullptr && current->application == object->application;
  if (isSame && object->specifier != nullptr) return;
  requireLocated(*object->application);
  if (auto refusal = state_->host.enterTell(*object->application->information)) {
    raiseReply(object->application, *refusal, {});
  }
}

Evaluator::Outcome Evaluator::run(tree::Tell const& node) {
  Datum target = dereferenced(locateValue(*node.target));
  enter(target);
  Scoped<Datum> const inside(target_, std::move(target));
  return execute(node.body);
}

/// A literal picks errors and is not assigned to.
void Evaluator::assign(Expression const* variable, Datum value) {
  if (variable != nullptr && variable->as<tree::Literal>() == nullptr) setTarget(*variable, std::move(value));
}

/// `on error number -128` catches that one only.
[[nodiscard]] static bool isCaught(tree::Try const& node, ScriptError const& error) {
  auto const literal = [](ExpressionPointer const& expression) {
    return expression == nullptr ? nullptr : expression->as<tree::Literal>();
  };
  auto const* const number = literal(node.number);
  if (number != nullptr && *number->value.as<std::int64_t>() != error.number) return false;
  auto const* const message = literal(node.message);
  return message == nullptr || *message->value.as<std::string>() == error.message();
}

Evaluator::Outcome Evaluator::run(tree::Try const& node) {
  std::optional<ScriptError> caught;
  try {
    return execute(node.body);
  } catch (ScriptError& error) {
    if (error.isFinal || !isCaught(node, error)) throw;
    caught = std::move(error);
  }
  assign(node.message.get(), caught->message());
  assign(node.number.get(), caught->number);
  if (!caught->offender.isNull()) assign(node.offender.get(), caught->offender);
  if (!caught->expectedType.isNull()) assign(node.expectedType.get(), caught->expectedType);
  assign(node.partialResult.get(),
         caught->partialResult.isNull() ? Datum(state_->makeList({})) : caught->partialResult);
  return execute(node.onError);
}

bool Evaluator::turn(Block const& body, Outcome& outcome) {
  state_->spend();
  outcome = {};
  outcome = execute(body);
  if (outcome.flow == Flow::next) return true;
  if (outcome.flow == Flow::exitRepeat) outcome = {};
  return false;
}

Evaluator::Outcome Evaluator::run(tree::RepeatForever const& node) {
  Outcome outcome;
  while (turn(node.body, outcome)) {
  }
  return outcome;
}

Evaluator::Outcome Evaluator::run(tree::RepeatTimes const& node) {
  Outcome outcome;
  std::int64_t const count = coerceToInteger(operand(*node.count), *state_);
  for (std::int64_t i = 0; i < count; ++i) {
    if (!turn(node.body, outcome)) break;
  }
  return outcome;
}

Evaluator::Outcome Evaluator::run(tree::RepeatWhile const& node) {
  Outcome outcome;
  bool const goesOnWhen = node.sense == tree::RepeatWhile::Sense::whileTrue;
  while (condition(*node.condition) == goesOnWhen) {
    if (!turn(node.body, outcome)) break;
  }
  return outcome;
}

/// The variable holds a reference to the item, not the item, and the length is looked at in each turn.
Evaluator::Outcome Evaluator::run(tree::RepeatInList const& node) {
  Outcome outcome;
  Datum const value = dereferenced(evaluate(*node.list));
  ListReference list;
  if (auto const* text = value.as<Text>()) {
    std::vector<Datum> characters;
    for (std::string_view const character : charactersOf(text->view())) characters.emplace_back(std::string(character));
    list = state_->makeList(std::move(characters));
  } else {
    list = *coerce(value, "list"_code, *state_).as<ListReference>();
  }
  for (std::size_t i = 0; i < list->items.size(); ++i) {
    assign(node.variable.get(), ItemReference{list, i});
    if (!turn(node.body, outcome)) break;
  }
  return outcome;
}

Evaluator::Outcome Evaluator::run(tree::RepeatFromTo const& node) {
  Outcome outcome;
  std::int64_t const from = coerceToInteger(operand(*node.from), *state_);
  std::int64_t const to = coerceToInteger(operand(*node.to), *state_);
  std::int64_t const by = node.by == nullptr ? 1 : coerceToInteger(operand(*node.by), *state_);
  if (by == 0) raise(errors::kGeneral, "A loop cannot go on by steps of 0.");
  for (std::int64_t i = from; by > 0 ? i <= to : i >= to; i += by) {
    assign(node.variable.get(), i);
    if (!turn(node.body, outcome)) break;
  }
  return outcome;
}

Evaluator::Outcome Evaluator::run(tree::ExitRepeat const& /*node*/) {
  return {Flow::exitRepeat, std::nullopt};
}

Evaluator::Outcome Evaluator::run(tree::Return const& node) {
  if (node.value == nullptr) return {Flow::returned, std::nullopt};
  Datum value = evaluate(*node.value);
  if (value.isNull()) return {Flow::returned, std::nullopt};
  return {Flow::returned, std::move(value)};
}

Evaluator::Outcome Evaluator::run(tree::RaiseError const& node) {
  ScriptError error;
  if (node.number != nullptr) error.number = coerceToInteger(operand(*node.number), *state_);
  if (node.message != nullptr) {
    error.brief = coerce(operand(*node.message), "ctxt"_code, *state_).as<Text>()->string();
  } else {
    error.brief = errorText(error.number);
  }
  if (node.offender != nullptr) error.offender = locateValue(*node.offender);
  if (node.expectedType != nullptr) error.expectedType = evaluate(*node.expectedType);
  if (node.partialResult != nullptr) error.partialResult = evaluate(*node.partialResult);
  throw error;
}

Evaluator::Outcome Evaluator::run(tree::Considering const& node) {
  constexpr std::uint32_t kResponses = tree::Considering::kApplicationResponses;
  bool const ignores = (node.ignored & kResponses) != 0;
  bool const changes = ignores || (node.considered & kResponses) != 0;
  Scoped<bool> const responses(state_->ignoresResponses, changes ? ignores : state_->ignoresResponses);
  Considerations inside = state_->considerations;
  // The numeric strings are the one attribute that is ignored unless a bit says otherwise.
  constexpr std::uint32_t kNumeric = Considerations::kConsiderNumericStrings;
  inside.bits =
      (inside.bits & ~(node.considered | node.ignored)) | (node.ignored & ~kNumeric) | (node.considered & kNumeric);
  inside.bits &= ~kResponses;
  Scoped<Considerations> const scope(state_->considerations, inside);
  return execute(node.body);
}

Evaluator::Outcome Evaluator::run(tree::WithTimeout const& node) {
  std::int64_t const seconds = coerceToInteger(operand(*node.seconds), *state_);
  Scoped<std::chrono::milliseconds> const scope(timeout_, std::chrono::seconds(std::max<std::int64_t>(seconds, 0)));
  return execute(node.body);
}

Evaluator::Outcome Evaluator::run(tree::Declare const& node) {
  for (std::size_t const slot : node.slots) {
    Activation::Slot& variable = current_->slots[slot];
    bool const isAtTop = current_ == top_->runVariables;
    if (node.scope == tree::Declare::Scope::local) {
      variable = {Datum(), Activation::Scope::local};
    } else if (!isAtTop) {
      variable = {Datum(), Activation::Scope::global};
    }
  }
  return {};
}

Evaluator::Outcome Evaluator::run(tree::DefineScript const& node) {
  ScriptReference const script =
      instantiate(*node.script, current_->home, node.script->usesCreator ? current_ : nullptr);
  if (node.variable != nullptr) current_->slots[node.variable->as<tree::Variable>()->slot].value = script;
  lastResult_ = script;
  return {Flow::next, script};
}

Evaluator::Outcome Evaluator::run(tree::Group const& node) {
  return execute(node.body);
}

}  // namespace morla::applescript
