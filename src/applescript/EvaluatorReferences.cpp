#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"

namespace morla::applescript {

using Form = tree::ElementOf::Form;

/// The container as a value of the script or as an object. What only the language knows (text items, lengths, quoted
/// forms) is no business of an application: for those the container's value is fetched.
Datum Evaluator::containerOf(Expression const& container, bool isForLanguage) {
  Place place = locate(container);
  Datum datum = dereferenced(std::move(place.datum));
  auto const* object = datum.as<ApplicationObject>();
  if (isForLanguage && place.isPending && object != nullptr) return fetched(datum);
  return datum;
}

[[nodiscard]] static bool applicationKnows(ApplicationObject const* object, Code code) {
  if (object == nullptr || object->application->terms == nullptr) return false;
  Terminology const& terms = *object->application->terms;
  return terms.hasClass(code) || terms.propertyName(code).has_value();
}

Evaluator::Place Evaluator::at(tree::PropertyOf const& node) {
  auto const* code = std::get_if<Code>(&node.key);
  Place const owner = locate(*node.container);
  Datum container = dereferenced(owner.datum);
  auto const* object = container.as<ApplicationObject>();
  if (object != nullptr && code != nullptr) {
    if (*code == "pcnt"_code) return {container, true};
    if (object->specifier == nullptr && *code == "prun"_code) {
      return {state_->host.isRunning(object->application->reference)};
    }
    if (object->specifier == nullptr && *code == "ID  "_code) {
      requireLocated(*object->application);
      return {object->application->information->identifier};
    }
    if (!isLanguageProperty(*code) || !owner.isPending || applicationKnows(object, *code)) {
      return {this->object(*object, {"prop"_code, KeyForm::property, TypeCode{*code}, {}}), true};
    }
    container = dereferenced(fetched(container));
  }
  if (auto const* script = container.as<ScriptReference>()) {
    if (std::optional<Datum> value = propertyOfScript(*script, node.key)) return {*std::move(value)};
  }
  if (std::optional<Datum> value = propertyOfValue(container, node.key, *state_)) return {*std::move(value)};
  auto const* name = std::get_if<std::string>(&node.key);
  std::string const term =
      name != nullptr ? *name : standardTerms().propertyName(*code).value_or(typeName(*code, *state_));
  raise(errors::kNoSuchObject, "Can’t get " + term + " of " + sourceText(container, *state_) + ".", container);
}

ElementRequest Evaluator::request(tree::ElementOf const& node) {
  if (node.form == Form::test) {
    raise(errors::kNoSuchObject, "A whose clause works on an application’s objects only.");
  }
  ElementRequest result{node.type, node.form, {}, {}};
  auto const bound = [this](Expression const& expression, Datum& number, std::shared_ptr<ElementRequest const>& part) {
    auto const* element = expression.as<tree::ElementOf>();
    if (element != nullptr && element->container->as<tree::ImpliedTarget>() != nullptr) {
      part = std::make_shared<ElementRequest const>(request(*element));
    } else {
      number = dereferenced(evaluate(expression));
    }
  };
  bool const isRange = node.form == Form::range;
  if (isRange) {
    bound(*node.selector, result.selector, result.lowerElement);
    bound(*node.upper, result.upper, result.upperElement);
  } else if (node.selector != nullptr) {
    result.selector = dereferenced(evaluate(*node.selector));
  }
  return result;
}

Evaluator::Place Evaluator::at(tree::ElementOf const& node) {
  Place const owner = locate(*node.container);
  Datum container = dereferenced(owner.datum);
  auto const* object = container.as<ApplicationObject>();
  bool const isForLanguage = isLanguageElement(node.type) && owner.isPending && !applicationKnows(object, node.type);
  if (object != nullptr && !isForLanguage) return {elementSpecifier(node, *object), true};
  if (object != nullptr) container = dereferenced(fetched(container));
  // `character 1 of every word of t`: one of each.
  auto const* many = node.container->as<tree::ElementOf>();
  auto const* list = container.as<ListReference>();
  bool const isOfEach = many != nullptr && list != nullptr &&
                        (many->form == Form::every || many->form == Form::range) && isLanguageElement(node.type) &&
                        node.type != "cobj"_code;
  if (!isOfEach) return {elementOfValue(container, request(node), *state_)};
  ElementRequest const wanted = request(node);
  std::vector<Datum> parts;
  for (Datum const& each : (*list)->items) parts.push_back(elementOfValue(dereferenced(each), wanted, *state_));
  return {state_->makeList(std::move(parts))};
}

/// A reference that stays one: nothing is fetched, and an item of a list is not taken out.
Evaluator::Place Evaluator::at(tree::ReferenceTo const& node) {
  if (auto const* element = node.object->as<tree::ElementOf>()) {
    Datum const container = dereferenced(locateValue(*element->container));
    if (container.as<ListReference>() != nullptr) {
      if (auto const item = itemReference(container, request(*element))) return {*item};
    }
  }
  if (auto const* property = node.object->as<tree::PropertyOf>()) {
    Datum const owner = dereferenced(locateValue(*property->container));
    if (owner.as<RecordReference>() != nullptr || owner.as<ScriptReference>() != nullptr) {
      return {std::make_shared<PropertyPlace const>(PropertyPlace{owner, property->key})};
    }
  }
  if (auto const* name = node.object->as<tree::Variable>()) {
    Activation::Slot const& slot = current_->slots[name->slot];
    if (!slot.value.isNull()) return {VariableReference{current_, name->slot}};
    return {std::make_shared<PropertyPlace const>(PropertyPlace{current_->home, name->key})};
  }
  Datum const object = locateValue(*node.object);
  if (object.as<ApplicationObject>() != nullptr || object.as<ItemReference>() != nullptr) return {object};
  raise(errors::kGeneral, "A reference is to a variable, a property, an item of a list or an application’s object.");
}

Value Evaluator::containerValue(ApplicationObject const& container) const {
  return container.specifier == nullptr ? Value() : Value(container.specifier);
}

Datum Evaluator::object(ApplicationObject const& container, Specifier specifier) {
  specifier.container = containerValue(container);
  std::size_t depth = 1;
  for (Value const* outer = &specifier.container; outer->as<SpecifierPointer>() != nullptr; ++depth) {
    outer = &(*outer->as<SpecifierPointer>())->container;
  }
  if (depth > state_->limits.depth) raise(errors::kNestedTooDeeply, "The reference is nested too deeply.");
  return ApplicationObject{container.application, std::make_shared<Specifier const>(std::move(specifier))};
}

Datum Evaluator::elementSpecifier(tree::ElementOf const& node, ApplicationObject const& container) {
  if (node.form == Form::middle || node.form == Form::some) {
    // No index says "middle", so the objects are counted first; any one is "some", hence the first.
    std::int64_t index = 1;
    if (node.form == Form::middle) {
      Datum const count = send(*container.application, "core"_code, "cnte"_code, containerValue(container),
                               {{"kocl"_code, TypeCode{node.type}}});
      index = (coerceToInteger(count, *state_) + 1) / 2;
    }
    return object(container, {node.type, KeyForm::index, index, {}});
  }
  Value const within = specifierWithin(node, containerValue(container));
  return object(container, **within.as<SpecifierPointer>());
}

/// A bound is an index, or an object of the same container.
Value Evaluator::rangeBound(Code type, Expression const& bound) {
  Datum const value = dereferenced(evaluate(bound));
  if (auto const* name = value.as<Text>()) {
    return std::make_shared<Specifier const>(Specifier{type, KeyForm::name, name->string(), {}});
  }
  if (value.as<ApplicationObject>() != nullptr) return toValue(value);
  return coerceToInteger(value, *state_);
}

Value Evaluator::specifierWithin(tree::ElementOf const& node, Value container) {
  Specifier result{node.type, KeyForm::every, {}, std::move(container)};
  switch (node.form) {
    case Form::every:
      break;
    case Form::first:
      result.form = KeyForm::index;
      result.selector = std::int64_t{1};
      break;
    case Form::last:
      result.form = KeyForm::index;
      result.selector = std::int64_t{-1};
      break;
    case Form::test:
      result.form = KeyForm::test;
      result.selector = testOf(*node.selector);
      break;
    case Form::range:
      result.form = KeyForm::range;
      result.selector = Record{{"star"_code, rangeBound(node.type, *node.selector)},
                               {"stop"_code, rangeBound(node.type, *node.upper)}};
      break;
    case Form::id:
      result.form = KeyForm::id;
      result.selector = toValue(operand(*node.selector));
      break;
    case Form::before:
    case Form::after:
      result.form = KeyForm::relative;
      result.selector = Enumerator{node.form == Form::before ? "prev"_code : "next"_code};
      break;
    case Form::middle:
    case Form::some:
    case Form::index:
    case Form::name:
    case Form::indexOrName: {
      if (node.selector == nullptr) raise(errors::kGeneral, "“middle” and “some” cannot stand in a whose clause.");
      Datum const selector = operand(*node.selector);
      bool const isName = node.form == Form::name || (node.form != Form::index && selector.as<Text>() != nullptr);
      result.form = isName ? KeyForm::name : KeyForm::index;
      result.selector =
          isName ? toValue(coerce(selector, "ctxt"_code, *state_)) : Value(coerceToInteger(selector, *state_));
      break;
    }
  }
  return std::make_shared<Specifier const>(std::move(result));
}

// --- Whose clauses

/// The tested object or something of it; nothing for an expression about anything else.
std::optional<Value> Evaluator::testedObject(Expression const& expression) {
  if (expression.as<tree::Examined>() != nullptr) return Value(TypeCode{"exmn"_code});
  if (auto const* property = expression.as<tree::PropertyOf>()) {
    auto const* code = std::get_if<Code>(&property->key);
    std::optional<Value> container = testedObject(*property->container);
    if (!container || code == nullptr) return std::nullopt;
    return Value(std::make_shared<Specifier const>(
        Specifier{"prop"_code, KeyForm::property, TypeCode{*code}, *std::move(container)}));
  }
  if (auto const* element = expression.as<tree::ElementOf>()) {
    std::optional<Value> container = testedObject(*element->container);
    if (!container) return std::nullopt;
    return specifierWithin(*element, *std::move(container));
  }
  return std::nullopt;
}

Value Evaluator::testOperand(Expression const& expression) {
  if (std::optional<Value> object = testedObject(expression)) return *std::move(object);
  return toValue(dereferenced(evaluate(expression)));
}

[[nodiscard]] static Value negatedTest(Value test) {
  return Record{{"logc"_code, Enumerator{"NOT "_code}}, {"term"_code, List{std::move(test)}}};
}

[[nodiscard]] static Value comparisonTest(Code relation, Value left, Value right) {
  return Record{{"relo"_code, Enumerator{relation}}, {"obj1"_code, std::move(left)}, {"obj2"_code, std::move(right)}};
}

/// The condition as a record that the application evaluates for each of its objects.
Value Evaluator::testOf(Expression const& expression) {
  Level const level(*this);
  if (auto const* comparison = expression.as<tree::Comparison>()) {
    Value left = testOperand(*comparison->left);
    Value right = testOperand(*comparison->right);
    switch (comparison->operation) {
      case ComparisonOperator::equal:
        return comparisonTest("=   "_code, std::move(left), std::move(right));
      case ComparisonOperator::notEqual:
        return negatedTest(comparisonTest("=   "_code, std::move(left), std::move(right)));
      case ComparisonOperator::less:
        return comparisonTest("<   "_code, std::move(left), std::move(right));
      case ComparisonOperator::lessOrEqual:
        return comparisonTest("<=  "_code, std::move(left), std::move(right));
      case ComparisonOperator::greater:
        return comparisonTest(">   "_code, std::move(left), std::move(right));
      case ComparisonOperator::greaterOrEqual:
        return comparisonTest(">=  "_code, std::move(left), std::move(right));
      case ComparisonOperator::contains:
        return comparisonTest("cont"_code, std::move(left), std::move(right));
      case ComparisonOperator::notContains:
        return negatedTest(comparisonTest("cont"_code, std::move(left), std::move(right)));
      case ComparisonOperator::isIn:
        return comparisonTest("cont"_code, std::move(right), std::move(left));
      case ComparisonOperator::isNotIn:
        return negatedTest(comparisonTest("cont"_code, std::move(right), std::move(left)));
      case ComparisonOperator::startsWith:
        return comparisonTest("bgwt"_code, std::move(left), std::move(right));
      case ComparisonOperator::endsWith:
        return comparisonTest("ends"_code, std::move(left), std::move(right));
    }
  }
  if (auto const* unary = expression.as<tree::Unary>();
      unary != nullptr && unary->operation == UnaryOperator::logicalNot) {
    return negatedTest(testOf(*unary->operand));
  }
  if (auto const* chain = expression.as<tree::Chain>()) {
    BinaryOperator const kind = chain->rest.front().first;
    if (kind == BinaryOperator::logicalAnd || kind == BinaryOperator::logicalOr) {
      List terms{testOf(*chain->first)};
      for (auto const& term : chain->rest) terms.push_back(testOf(*term.second));
      Code const logic = kind == BinaryOperator::logicalAnd ? "AND "_code : "OR  "_code;
      return Record{{"logc"_code, Enumerator{logic}}, {"term"_code, std::move(terms)}};
    }
  }
  // `whose selected`
  if (std::optional<Value> object = testedObject(expression)) {
    return comparisonTest("=   "_code, *std::move(object), true);
  }
  raise(errors::kGeneral, "This cannot be a whose clause.");
}

}  // namespace morla::applescript
