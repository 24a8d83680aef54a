#include "applescript/Coercion.h"
#include "applescript/DateProperties.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"
#include "applescript/Scoped.h"

namespace morla::applescript {

/// Where a variable is kept: in the handler itself, in a script object around it, or in the handler that made that
/// script object. Null when nothing of that name has a value.
Datum* Evaluator::storageOf(tree::Variable const& variable) {
  Activation::Slot& slot = current_->slots[variable.slot];
  if (!slot.value.isNull()) return &slot.value;
  if (slot.scope == Activation::Scope::local) return nullptr;
  if (slot.scope == Activation::Scope::global) return top_->find(std::string_view(variable.key));
  for (ScriptReference const* script = &current_->home; *script != nullptr; script = &(*script)->outer) {
    auto const found = (*script)->named.find(variable.key);
    if (found != (*script)->named.end()) return &found->second;
    if ((*script)->creator == nullptr) continue;
    Activation::Slot* const outer = (*script)->creator->find(variable.key);
    if (outer != nullptr && !outer->value.isNull()) return &outer->value;
  }
  return nullptr;
}

Datum Evaluator::variable(tree::Variable const& variable) {
  if (Datum const* value = storageOf(variable); value != nullptr && !value->isNull()) return *value;
  for (ScriptReference const* script = &current_->home; *script != nullptr; script = &(*script)->outer) {
    auto const handler = (*script)->code->handlers.find(variable.key);
    if (handler != (*script)->code->handlers.end()) return HandlerValue{&handler->second, *script};
  }
  if (variable.key == "parent") return *propertyOfScript(current_->me, variable.key);
  raise(errors::kUndefinedVariable, "The variable " + variable.name + " is not defined.");
}

/// A property of a script object around the handler is set; a variable of another handler is not: a new one is made.
void Evaluator::setVariable(tree::Variable const& variable, Datum value) {
  Activation::Slot& slot = current_->slots[variable.slot];
  if (!slot.value.isNull() || slot.scope == Activation::Scope::local) {
    slot.value = std::move(value);
    return;
  }
  if (slot.scope == Activation::Scope::global) {
    if (Datum* const global = top_->find(std::string_view(variable.key))) {
      *global = std::move(value);
    } else {
      top_->named[variable.key] = std::move(value);
    }
    return;
  }
  for (ScriptReference const* script = &current_->home; *script != nullptr; script = &(*script)->outer) {
    auto const found = (*script)->named.find(variable.key);
    if (found == (*script)->named.end()) continue;
    found->second = std::move(value);
    return;
  }
  slot.value = std::move(value);
}

void Evaluator::setTarget(Expression const& target, Datum value) {
  if (auto const* name = target.as<tree::Variable>()) {
    setVariable(*name, std::move(value));
  } else if (auto const* property = target.as<tree::PropertyOf>()) {
    setProperty(*property, std::move(value));
  } else if (auto const* element = target.as<tree::ElementOf>()) {
    setElement(*element, std::move(value));
  } else if (auto const* place = target.as<tree::InsertionPlace>()) {
    auto point = std::make_shared<Datum const>(containerOf(*place->object, true));
    insertIntoValue({place->position, std::move(point)}, std::move(value), *state_);
  } else {
    bind(target, dereferenced(value));
  }
}

/// `set {a, {b, c}} to …`, `set {x:a} to …`: every name gets what stands at its place.
void Evaluator::bind(Expression const& pattern, Datum const& value) {
  if (auto const* list = pattern.as<tree::ListDisplay>()) {
    Datum const items = coerce(value, "list"_code, *state_);
    ListReference const source = *items.as<ListReference>();
    std::optional<Scoped<Datum>> inside;
    if (list->container != nullptr) inside.emplace(target_, containerOf(*list->container, false));
    for (std::size_t i = 0; i < list->items.size(); ++i) {
      if (i >= source->items.size()) {
        raise(errors::kNoSuchObject,
              "Can’t get item " + std::to_string(i + 1) + " of " + sourceText(items, *state_) + ".", items);
      }
      setTarget(*list->items[i], source->items[i]);
    }
  } else if (auto const* record = pattern.as<tree::RecordDisplay>()) {
    for (auto const& [key, target] : record->fields) {
      std::optional<Datum> const field = propertyOfValue(value, key, *state_);
      if (!field) raise(errors::kNoSuchObject, "Can’t get a property of " + sourceText(value, *state_) + ".", value);
      setTarget(*target, *field);
    }
  } else {
    setTarget(pattern, value);
  }
}

void Evaluator::setProperty(tree::PropertyOf const& target, Datum value) {
  auto const* code = std::get_if<Code>(&target.key);
  // `contents of r` is what r refers to, so the reference itself is wanted.
  Datum const owner = locateValue(*target.container);
  if (auto const* reference = owner.as<ItemReference>(); reference != nullptr && code != nullptr) {
    if (*code == "pcnt"_code && reference->index < reference->list->items.size()) {
      reference->list->items[reference->index] = std::move(value);
      return;
    }
  }
  if (code != nullptr && *code == "pcnt"_code) {
    if (auto const* variable = owner.as<VariableReference>()) {
      variable->variables->slots[variable->slot].value = std::move(value);
      return;
    }
    if (auto const* property = owner.as<PropertyReference>()) {
      if (Datum* const place = storageAt(**property)) {
        *place = std::move(value);
        return;
      }
    }
  }
  Datum const container = dereferenced(owner);
  if (auto const* date = container.as<Date>(); date != nullptr && code != nullptr) {
    if (setPropertyOfDate(*date, *code, value, *state_)) return;
  }
  if (auto const* object = container.as<ApplicationObject>(); object != nullptr && code != nullptr) {
    Datum const property = this->object(*object, {"prop"_code, KeyForm::property, TypeCode{*code}, {}});
    Value const data = toValue(value);
    static_cast<void>(send(*object->application, "core"_code, "setd"_code, toValue(property), {{"data"_code, data}}));
    return;
  }
  if (auto const* script = container.as<ScriptReference>()) {
    for (ScriptReference const* object = script; object != nullptr; object = (*object)->parent.as<ScriptReference>()) {
      if (Datum* const property = (*object)->find(target.key)) {
        *property = std::move(value);
        return;
      }
    }
  }
  bool const isLanguage = container.as<Language>() != nullptr || container.as<ScriptReference>() != nullptr;
  if (isLanguage && code != nullptr && *code == "txdl"_code) return setDelimiters(value);
  if (auto const* record = container.as<RecordReference>()) {
    if (Datum* field = (*record)->find(target.key)) {
      *field = std::move(value);
      return;
    }
  }
  std::string const name = code != nullptr
                               ? standardTerms().propertyName(*code).value_or("«property " + code->text() + "»")
                               : std::get<std::string>(target.key);
  raise(errors::kCannotSet,
        "Can’t set " + name + " of " + sourceText(container, *state_) + " to " + sourceText(value, *state_) + ".",
        container);
}

void Evaluator::setElement(tree::ElementOf const& target, Datum value) {
  Datum const container = dereferenced(containerOf(*target.container, false));
  if (auto const* object = container.as<ApplicationObject>()) {
    Datum const element = elementSpecifier(target, *object);
    Value const data = toValue(value);
    static_cast<void>(send(*object->application, "core"_code, "setd"_code, toValue(element), {{"data"_code, data}}));
    return;
  }
  setElementOfValue(container, request(target), std::move(value), *state_);
}

/// A text is a list of one.
void Evaluator::setDelimiters(Datum const& value) {
  Datum const given = dereferenced(value);
  TextItemDelimiters delimiters;
  if (auto const* list = given.as<ListReference>()) {
    for (Datum const& item : (*list)->items) {
      delimiters.push_back(coerce(item, "ctxt"_code, *state_).as<Text>()->string());
    }
  } else {
    delimiters.push_back(coerce(given, "ctxt"_code, *state_).as<Text>()->string());
  }
  state_->delimiters = std::move(delimiters);
  state_->delimitersAreText = given.as<ListReference>() == nullptr;
}

Datum Evaluator::copied(Datum const& datum, std::size_t depth) {
  if (depth > state_->limits.depth) raise(errors::kNestedTooDeeply, "The value is nested too deeply.");
  if (auto const* list = datum.as<ListReference>()) {
    std::vector<Datum> items;
    for (Datum const& item : (*list)->items) items.push_back(copied(item, depth + 1));
    return state_->makeList(std::move(items));
  }
  if (auto const* record = datum.as<RecordReference>()) {
    RecordObject::Fields fields;
    for (auto const& [key, value] : (*record)->fields) fields.emplace_back(key, copied(value, depth + 1));
    return state_->heap.makeRecord(std::move(fields));
  }
  if (auto const* date = datum.as<Date>()) return Date(*date->seconds);
  if (auto const* script = datum.as<ScriptReference>()) {
    auto copy = state_->heap.makeScript(*(*script)->code, (*script)->outer, (*script)->creator);
    copy->parent = (*script)->parent;
    for (auto const& [name, value] : (*script)->named) copy->named[name] = copied(value, depth + 1);
    for (auto const& [code, value] : (*script)->coded) copy->coded[code] = copied(value, depth + 1);
    return copy;
  }
  return datum;
}

}  // namespace morla::applescript
