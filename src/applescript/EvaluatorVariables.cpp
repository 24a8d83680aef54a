#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"

namespace morla::applescript {

Datum Evaluator::variable(std::string const& key, std::string const& name) const {
  auto const local = locals_->find(key);
  if (local != locals_->end()) {
    if (local->second) return *local->second;
  } else if (auto const global = globals_.find(key); global != globals_.end() && global->second) {
    return *global->second;
  }
  raise(errors::kUndefinedVariable, "The variable " + name + " is not defined.");
}

void Evaluator::setVariable(std::string const& key, Datum value) {
  auto const global = globals_.find(key);
  if (global != globals_.end() && !locals_->contains(key)) {
    global->second = std::move(value);
  } else {
    (*locals_)[key] = std::move(value);
  }
}

void Evaluator::setTarget(Expression const& target, Datum value) {
  if (auto const* name = target.as<tree::Variable>()) {
    setVariable(name->key, std::move(value));
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
  Datum const container = dereferenced(owner);
  if (auto const* object = container.as<ApplicationObject>(); object != nullptr && code != nullptr) {
    Datum const property = this->object(*object, {"prop"_code, KeyForm::property, TypeCode{*code}, {}});
    Value const data = toValue(value);
    static_cast<void>(send(*object->application, "core"_code, "setd"_code, toValue(property), {{"data"_code, data}}));
    return;
  }
  if (container.as<ScriptItself>() != nullptr) {
    if (code != nullptr && *code == "txdl"_code) return setDelimiters(value);
    if (auto const* name = std::get_if<std::string>(&target.key)) {
      globals_[*name] = std::move(value);
      return;
    }
  }
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
  return datum;
}

}  // namespace morla::applescript
