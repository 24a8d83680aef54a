#include "applescript/Calendar.h"
#include "applescript/Coercion.h"
#include "applescript/Comparison.h"
#include "applescript/Describe.h"
#include "applescript/ErrorTexts.h"
#include "applescript/Evaluator.h"
#include "applescript/Operators.h"
#include "applescript/Scoped.h"

namespace morla::applescript {

Datum Evaluator::evaluate(Expression const& expression) {
  Place place = locate(expression);
  // The end of a list is a place to put something, and nothing is there to get.
  if (auto const* point = place.datum.as<InsertionPoint>(); point != nullptr) {
    if (dereferenced(*point->object).as<ListReference>() != nullptr) {
      raise(errors::kNoSuchObject, "Can’t get " + sourceText(place.datum, *state_) + ".", *point->object);
    }
  }
  if (!place.isPending) return std::move(place.datum);
  SourceRange const outer = range_;
  range_ = expression.range;
  Datum value = fetched(place.datum);
  range_ = outer;
  return value;
}

Evaluator::Place Evaluator::locate(Expression const& expression) {
  Level const level(*this);
  state_->spend();
  // Not restored when an error passes: then it says where the error was.
  SourceRange const outer = range_;
  range_ = expression.range;
  Place place = std::visit([this](auto const& node) { return at(node); }, expression.node);
  range_ = outer;
  return place;
}

/// The value of an expression that has to have one: a handler may return nothing.
Datum Evaluator::needed(Expression const& expression) {
  Datum value = evaluate(expression);
  if (value.isNull()) raise(errors::kNoResult, errorText(errors::kNoResult));
  return value;
}

Datum Evaluator::operand(Expression const& expression) {
  Datum const value = dereferenced(needed(expression));
  auto const* object = value.as<ApplicationObject>();
  return object != nullptr && object->specifier != nullptr ? fetched(value) : value;
}

bool Evaluator::condition(Expression const& expression) {
  return coerceToBoolean(operand(expression), *state_);
}

Evaluator::Place Evaluator::at(tree::Literal const& node) {
  if (auto const* text = node.value.as<std::string>()) return {*text};
  return {toDatum(node.value, nullptr)};
}

Evaluator::Place Evaluator::at(tree::Variable const& node) {
  return {variable(node)};
}

Evaluator::Place Evaluator::at(tree::ListDisplay const& node) {
  std::optional<Scoped<Datum>> inside;
  if (node.container != nullptr) inside.emplace(target_, containerOf(*node.container, false));
  std::vector<Datum> items;
  items.reserve(node.items.size());
  for (ExpressionPointer const& item : node.items) items.push_back(needed(*item));
  return {state_->makeList(std::move(items))};
}

Evaluator::Place Evaluator::at(tree::RecordDisplay const& node) {
  RecordObject::Fields fields;
  for (auto const& [key, value] : node.fields) fields.emplace_back(key, needed(*value));
  return {state_->heap.makeRecord(std::move(fields))};
}

Evaluator::Place Evaluator::at(tree::Unary const& node) {
  if (node.operation == UnaryOperator::logicalNot) return {!condition(*node.operand)};
  Datum const value = operand(*node.operand);
  if (node.operation == UnaryOperator::plus) return {coerce(value, "nmbr"_code, *state_)};
  return {negated(value, *state_)};
}

Evaluator::Place Evaluator::at(tree::Chain const& node) {
  BinaryOperator const kind = node.rest.front().first;
  if (kind == BinaryOperator::logicalAnd || kind == BinaryOperator::logicalOr) {
    bool const decides = kind == BinaryOperator::logicalOr;
    if (condition(*node.first) == decides) return {decides};
    for (auto const& term : node.rest) {
      if (condition(*term.second) == decides) return {decides};
    }
    return {!decides};
  }
  // An object that becomes an item of a list stays an object; numbers and texts need its value.
  auto const side = [this](BinaryOperator operation, Expression const& expression, bool becomesText) {
    bool const keepsObjects = operation == BinaryOperator::concatenate && !becomesText;
    return keepsObjects ? dereferenced(needed(expression)) : operand(expression);
  };
  Datum value = side(kind, *node.first, false);
  for (auto const& [operation, expression] : node.rest) {
    state_->spend();
    Datum const right = side(operation, *expression, value.as<Text>() != nullptr);
    value = applied(operation, value, right, *state_);
  }
  return {std::move(value)};
}

Evaluator::Place Evaluator::at(tree::Comparison const& node) {
  bool const isEquality = node.operation == ComparisonOperator::equal || node.operation == ComparisonOperator::notEqual;
  if (isEquality) {
    Datum const left = evaluate(*node.left);
    return {compare(node.operation, left, evaluate(*node.right), *state_)};
  }
  auto const isOrder =
      node.operation == ComparisonOperator::less || node.operation == ComparisonOperator::lessOrEqual ||
      node.operation == ComparisonOperator::greater || node.operation == ComparisonOperator::greaterOrEqual;
  Datum const left = isOrder ? operand(*node.left) : dereferenced(evaluate(*node.left));
  Datum const right = isOrder ? operand(*node.right) : dereferenced(evaluate(*node.right));
  return {compare(node.operation, left, right, *state_)};
}

Evaluator::Place Evaluator::at(tree::Coerce const& node) {
  if (node.type == "obj "_code) return {locateValue(*node.operand)};
  Datum const value = dereferenced(evaluate(*node.operand));
  auto const* object = value.as<ApplicationObject>();
  bool const staysObject = node.type == "list"_code || object == nullptr || object->specifier == nullptr;
  return {coerce(staysObject ? value : fetched(value), node.type, *state_)};
}

/// Nothing is sent to an application to know whether it runs; its objects are asked for their property "running".
Evaluator::Place Evaluator::at(tree::IsRunning const& node) {
  Datum const value = dereferenced(locateValue(*node.application));
  auto const* object = value.as<ApplicationObject>();
  if (object == nullptr) {
    raise(errors::kNoSuchObject, "Can’t get running of " + sourceText(value, *state_) + ".", value);
  }
  if (object->specifier == nullptr) return {state_->host.isRunning(object->application->reference)};
  return {this->object(*object, {"prop"_code, KeyForm::property, TypeCode{"prun"_code}, {}}), true};
}

Evaluator::Place Evaluator::at(tree::ImpliedTarget const& /*node*/) {
  return {target_};
}

Evaluator::Place Evaluator::at(tree::It const& /*node*/) {
  return {target_};
}

Evaluator::Place Evaluator::at(tree::Me const& /*node*/) {
  return {current_->me};
}

Evaluator::Place Evaluator::at(tree::TheLanguage const& /*node*/) {
  return {Language{}};
}

Evaluator::Place Evaluator::at(tree::Examined const& /*node*/) {
  raise(errors::kGeneral, "“it” of a whose clause has no value of its own.");
}

Evaluator::Place Evaluator::at(tree::LastResult const& /*node*/) {
  if (!lastResult_) raise(errors::kUndefinedVariable, "The variable result is not defined.");
  return {*lastResult_};
}

Evaluator::Place Evaluator::at(tree::InsertionPlace const& node) {
  return {InsertionPoint{node.position, std::make_shared<Datum const>(containerOf(*node.object, false))}};
}

Evaluator::Place Evaluator::at(tree::ApplicationNamed const& node) {
  if (node.known != nullptr) return {ApplicationObject{node.known, nullptr}};
  Datum const text = coerce(operand(*node.text), "ctxt"_code, *state_);
  return {ApplicationObject{state_->applications.named({node.kind, text.as<Text>()->string()}), nullptr}};
}

Evaluator::Place Evaluator::at(tree::PosixFile const& node) {
  Datum const path = coerce(operand(*node.path), "ctxt"_code, *state_);
  return {FileUrl{path.as<Text>()->string()}};
}

Evaluator::Place Evaluator::at(tree::RelativeDate const& node) {
  Datum const text = coerce(operand(*node.text), "ctxt"_code, *state_);
  Datum const base = coerce(operand(*node.base), "ldt "_code, *state_);
  auto const moment = parseRelativeDate(text.as<Text>()->view(), *base.as<Date>()->seconds);
  if (!moment) raise(errors::kInvalidDate, "Invalid date and time " + sourceText(text, *state_) + ".", text);
  return {Date(*moment)};
}

}  // namespace morla::applescript
