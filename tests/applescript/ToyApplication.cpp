#include "ToyApplication.h"

#include <algorithm>
#include <stdexcept>

#include "base/unicode/Unicode.h"

namespace morla::applescript::test {
namespace {

[[nodiscard]] EventError noSuchObject(Value const& about) {
  return {errors::kNoSuchObject, "", about};
}

[[nodiscard]] Value const* parameterOf(AppleEvent const& event, Code code) {
  for (auto const& [name, value] : event.parameters) {
    if (name == code) return &value;
  }
  return nullptr;
}

[[nodiscard]] Value const* fieldOf(Value const& value, Code code) {
  auto const* record = value.as<Record>();
  if (record == nullptr) return nullptr;
  for (RecordField const& field : *record) {
    if (field.key == RecordKey(code)) return &field.value;
  }
  return nullptr;
}

[[nodiscard]] double numberOf(Value const& value) {
  if (auto const* integer = value.as<std::int64_t>()) return static_cast<double>(*integer);
  auto const* real = value.as<double>();
  return real == nullptr ? 0 : *real;
}

}  // namespace

ToyApplication::ToyApplication(std::string name, std::string identifier, std::string_view dictionaryTable)
    : information_{std::move(name), std::move(identifier)} {
  DictionaryOrProblem parsed = parseDictionary(dictionaryTable);
  if (!parsed.dictionary) throw std::logic_error("the toy's dictionary, " + parsed.problem);
  dictionary_ = std::make_shared<Dictionary const>(*std::move(parsed.dictionary));
  root.type = "capp"_code;
}

ToyApplication::Object& ToyApplication::add(Object& parent, Code type, std::map<Code, Value> properties) {
  parent.elements.push_back({type, ++lastId_, std::move(properties), {}});
  return parent.elements.back();
}

Value ToyApplication::specifierOf(Object const& object) const {
  if (&object == &root) return {};
  return std::make_shared<Specifier const>(Specifier{object.type, KeyForm::id, object.id, {}});
}

[[nodiscard]] static ToyApplication::Object* findById(ToyApplication::Object& within, std::int64_t id) {
  for (auto& element : within.elements) {
    if (element.id == id) return &element;
    if (auto* deeper = findById(element, id)) return deeper;
  }
  return nullptr;
}

ToyApplication::Found ToyApplication::find(Value const& reference) {
  if (reference.isNull()) return {{&root}, {}};
  auto const* pointer = reference.as<SpecifierPointer>();
  if (pointer == nullptr) return {{}, noSuchObject(reference)};
  Specifier const& specifier = **pointer;
  if (specifier.form == KeyForm::id) {
    Object* object = findById(root, static_cast<std::int64_t>(numberOf(specifier.selector)));
    if (object == nullptr) return {{}, noSuchObject(reference)};
    return {{object}, {}};
  }
  if (specifier.form == KeyForm::relative) return neighbour(specifier);
  Found const container = find(specifier.container);
  if (container.error) return container;
  if (container.objects.empty()) return {{}, noSuchObject(reference)};
  if (specifier.form == KeyForm::property) {
    // A property whose value is an object leads on to it; a script can make it lead back to itself.
    if (++hops_ > kMaximumHops) return {{}, noSuchObject(reference)};
    Object const& owner = *container.objects.front();
    auto const value = owner.properties.find(specifier.selector.as<TypeCode>()->code);
    if (value == owner.properties.end()) return {{}, noSuchObject(reference)};
    return find(value->second);
  }
  std::vector<Object*> candidates;
  for (Object* owner : container.objects) {
    if (owner->type == specifier.wanted) candidates.push_back(owner);
    for (Object& element : owner->elements) {
      if (element.type == specifier.wanted) candidates.push_back(&element);
    }
  }
  Found found = pick(specifier, candidates);
  if (found.error) found.error->offender = reference;
  return found;
}

[[nodiscard]] static ToyApplication::Object* parentOf(ToyApplication::Object& within, std::int64_t id) {
  for (auto& element : within.elements) {
    if (element.id == id) return &within;
    if (auto* deeper = parentOf(element, id)) return deeper;
  }
  return nullptr;
}

/// The object of the wanted class next to another one.
ToyApplication::Found ToyApplication::neighbour(Specifier const& specifier) {
  Found const other = find(specifier.container);
  if (other.error) return other;
  if (other.objects.empty()) return {{}, noSuchObject({})};
  Object* const parent = parentOf(root, other.objects.front()->id);
  if (parent == nullptr) return {{}, noSuchObject({})};
  bool const isNext = specifier.selector == Value(Enumerator{"next"_code});
  Object* previous = nullptr;
  bool hasPassed = false;
  for (Object& element : parent->elements) {
    if (&element == other.objects.front()) {
      if (!isNext) break;
      hasPassed = true;
      continue;
    }
    if (element.type != specifier.wanted) continue;
    if (hasPassed) return {{&element}, {}};
    previous = &element;
  }
  if (isNext || previous == nullptr) return {{}, noSuchObject({})};
  return {{previous}, {}};
}

ToyApplication::Found ToyApplication::pick(Specifier const& specifier, std::vector<Object*> const& candidates) {
  auto const at = [this, &candidates](Value const& selector) -> std::optional<std::size_t> {
    // A range's bound may be a name.
    if (auto const* bound = selector.as<SpecifierPointer>(); bound != nullptr && ++hops_ < kMaximumHops) {
      Found const one = pick(**bound, candidates);
      if (one.objects.empty()) return std::nullopt;
      return static_cast<std::size_t>(std::ranges::find(candidates, one.objects.front()) - candidates.begin());
    }
    std::int64_t index = static_cast<std::int64_t>(numberOf(selector));
    if (index < 0) index += static_cast<std::int64_t>(candidates.size()) + 1;
    if (index < 1 || index > static_cast<std::int64_t>(candidates.size())) return std::nullopt;
    return static_cast<std::size_t>(index - 1);
  };
  Found found;
  switch (specifier.form) {
    case KeyForm::every:
      return {candidates, {}};
    case KeyForm::index:
      if (auto const index = at(specifier.selector)) return {{candidates[*index]}, {}};
      return {{}, EventError{errors::kInvalidIndex, "", {}}};
    case KeyForm::name:
      for (Object* candidate : candidates) {
        auto const* name = candidate->properties["pnam"_code].as<std::string>();
        auto const* wanted = specifier.selector.as<std::string>();
        if (name != nullptr && wanted != nullptr && unicode::equalsIgnoringCase(*name, *wanted))
          return {{candidate}, {}};
      }
      return {{}, noSuchObject({})};
    case KeyForm::test:
      for (Object* candidate : candidates) {
        if (passes(*candidate, specifier.selector)) found.objects.push_back(candidate);
      }
      return found;
    case KeyForm::range: {
      auto const first = at(*fieldOf(specifier.selector, "star"_code));
      auto const last = at(*fieldOf(specifier.selector, "stop"_code));
      if (!first || !last) return {{}, EventError{errors::kInvalidIndex, "", {}}};
      for (std::size_t i = *first; i <= *last; ++i) found.objects.push_back(candidates[i]);
      return found;
    }
    case KeyForm::property:
    case KeyForm::id:
    case KeyForm::relative:
      break;
  }
  return {{}, EventError{errors::kEventNotHandled, "", {}}};
}

Value ToyApplication::tested(Object& object, Value const& operand) {
  auto const* pointer = operand.as<SpecifierPointer>();
  if (pointer == nullptr) return operand;
  if ((*pointer)->form != KeyForm::property) return {};
  return object.properties[(*pointer)->selector.as<TypeCode>()->code];
}

bool ToyApplication::passes(Object& object, Value const& test) {
  if (Value const* logic = fieldOf(test, "logc"_code)) {
    List const& terms = *fieldOf(test, "term"_code)->as<List>();
    Code const code = logic->as<Enumerator>()->code;
    auto const one = [&](Value const& term) { return passes(object, term); };
    if (code == "NOT "_code) return !one(terms.front());
    return code == "AND "_code ? std::ranges::all_of(terms, one) : std::ranges::any_of(terms, one);
  }
  Value const left = tested(object, *fieldOf(test, "obj1"_code));
  Value const right = tested(object, *fieldOf(test, "obj2"_code));
  Code const relation = fieldOf(test, "relo"_code)->as<Enumerator>()->code;
  if (relation == "=   "_code) return left == right;
  if (relation == ">   "_code) return numberOf(left) > numberOf(right);
  if (relation == ">=  "_code) return numberOf(left) >= numberOf(right);
  if (relation == "<   "_code) return numberOf(left) < numberOf(right);
  if (relation == "<=  "_code) return numberOf(left) <= numberOf(right);
  if (auto const* list = left.as<List>()) return std::ranges::find(*list, right) != list->end();
  if (left.as<std::string>() == nullptr || right.as<std::string>() == nullptr) return false;
  std::string const& text = *left.as<std::string>();
  std::string const& part = *right.as<std::string>();
  if (relation == "bgwt"_code) return text.starts_with(part);
  if (relation == "ends"_code) return text.ends_with(part);
  return text.find(part) != std::string::npos;
}

EventReply ToyApplication::get(Value const& reference) {
  auto const* pointer = reference.as<SpecifierPointer>();
  if (pointer != nullptr && (*pointer)->form == KeyForm::property) {
    Found const owners = find((*pointer)->container);
    if (owners.error) return *owners.error;
    Code const property = (*pointer)->selector.as<TypeCode>()->code;
    List values;
    for (Object* owner : owners.objects) {
      auto const found = owner->properties.find(property);
      if (property == "pcls"_code) {
        values.push_back(TypeCode{owner->type});
      } else if (property == "pALL"_code) {
        Record all;
        for (auto const& [code, value] : owner->properties) all.push_back({code, value});
        values.push_back(std::move(all));
      } else if (found == owner->properties.end()) {
        return noSuchObject(reference);
      } else {
        values.push_back(found->second);
      }
    }
    auto const* container = (*pointer)->container.as<SpecifierPointer>();
    bool const isMany =
        container != nullptr && ((*container)->form == KeyForm::every || (*container)->form == KeyForm::test ||
                                 (*container)->form == KeyForm::range);
    if (!isMany && values.empty()) return noSuchObject(reference);
    if (!isMany) return values.front();
    return Value(std::move(values));
  }
  Found const found = find(reference);
  if (found.error) return *found.error;
  bool const isMany = pointer != nullptr && ((*pointer)->form == KeyForm::every || (*pointer)->form == KeyForm::test ||
                                             (*pointer)->form == KeyForm::range);
  if (!isMany && found.objects.empty()) return noSuchObject(reference);
  if (!isMany) return specifierOf(*found.objects.front());
  List all;
  for (Object* object : found.objects) all.push_back(specifierOf(*object));
  return Value(std::move(all));
}

EventReply ToyApplication::set(AppleEvent const& event) {
  auto const* pointer = event.directObject.as<SpecifierPointer>();
  if (pointer == nullptr || (*pointer)->form != KeyForm::property) return EventError{errors::kCannotSet, "", {}};
  Code const property = (*pointer)->selector.as<TypeCode>()->code;
  for (auto const& term : dictionary_->properties) {
    if (term.code == property && !term.isWritable) return EventError{errors::kNotModifiable, "", event.directObject};
  }
  Found const owners = find((*pointer)->container);
  if (owners.error) return *owners.error;
  for (Object* owner : owners.objects) owner->properties[property] = *parameterOf(event, "data"_code);
  return Value();
}

EventReply ToyApplication::count(AppleEvent const& event) {
  Found const containers = find(event.directObject);
  if (containers.error) return *containers.error;
  Code const type = parameterOf(event, "kocl"_code)->as<TypeCode>()->code;
  std::int64_t total = 0;
  for (Object* container : containers.objects) {
    total += std::ranges::count_if(container->elements, [type](Object const& one) { return one.type == type; });
  }
  return Value(total);
}

EventReply ToyApplication::make(AppleEvent const& event) {
  Value const* type = parameterOf(event, "kocl"_code);
  if (type == nullptr) return EventError{errors::kParameterMissing, "", {}};
  Value const* place = parameterOf(event, "insh"_code);
  if (place == nullptr) place = parameterOf(event, "subj"_code);
  if (place != nullptr && fieldOf(*place, "kobj"_code) != nullptr) place = fieldOf(*place, "kobj"_code);
  Found const parents = place == nullptr ? Found{{&root}, {}} : find(*place);
  if (parents.error) return *parents.error;
  Value const* where = parameterOf(event, "insh"_code);
  if (where == nullptr) where = place;
  Object& made = insert(where, {type->as<TypeCode>()->code, ++lastId_, {}, {}});
  Value const* properties = parameterOf(event, "prdt"_code);
  if (properties != nullptr && properties->as<Record>() != nullptr) {
    for (RecordField const& field : *properties->as<Record>())
      if (auto const* code = std::get_if<Code>(&field.key)) made.properties[*code] = field.value;
  }
  return specifierOf(made);
}

/// At the end of the place's object, or where the place says. The place is known to exist.
ToyApplication::Object& ToyApplication::insert(Value const* place, Object object) {
  Value const* at = place == nullptr ? nullptr : fieldOf(*place, "kobj"_code);
  Value const* position = place == nullptr ? nullptr : fieldOf(*place, "kpos"_code);
  Value const* anchor = at != nullptr ? at : place;
  Found const found = anchor == nullptr ? Found{{&root}, {}} : find(*anchor);
  Object* parent = found.objects.empty() ? &root : found.objects.front();
  auto where = parent->elements.end();
  if (position != nullptr && *position == Value(Enumerator{"bgng"_code})) where = parent->elements.begin();
  bool const isBefore = position != nullptr && *position == Value(Enumerator{"befo"_code});
  bool const isAfter = position != nullptr && *position == Value(Enumerator{"afte"_code});
  if ((isBefore || isAfter) && parent != &root) {
    Object const* sibling = parent;
    parent = parentOf(root, sibling->id);
    where = std::ranges::find(parent->elements, sibling->id, &Object::id);
    if (isAfter) ++where;
  }
  return *parent->elements.insert(where, std::move(object));
}

void ToyApplication::renumber(Object& object) {
  object.id = ++lastId_;
  for (Object& element : object.elements) renumber(element);
}

/// `move` and `duplicate`: the objects come to stand at a new place.
EventReply ToyApplication::relocate(AppleEvent const& event, bool keepsOriginal) {
  Found const found = find(event.directObject);
  if (found.error) return *found.error;
  if (found.objects.empty() || found.objects.front() == &root) return EventError{errors::kHandlerFailed, "", {}};
  Value const* place = parameterOf(event, "insh"_code);
  if (place != nullptr) {
    Value const* at = fieldOf(*place, "kobj"_code);
    Found const target = find(at != nullptr ? *at : *place);
    if (target.error) return *target.error;
    // Nothing can come to stand inside itself.
    for (Object* one = target.objects.empty() ? nullptr : target.objects.front(); one != nullptr && one != &root;
         one = parentOf(root, one->id)) {
      if (one == found.objects.front()) return EventError{errors::kHandlerFailed, "", {}};
    }
  }
  Object copy = *found.objects.front();
  Value originalParent = specifierOf(*parentOf(root, copy.id));
  if (place == nullptr) place = &originalParent;
  if (keepsOriginal) {
    renumber(copy);
  } else {
    erase({copy.id});
  }
  return specifierOf(insert(place, std::move(copy)));
}

void ToyApplication::erase(std::set<std::int64_t> const& ids) {
  std::function<void(Object&)> const eraseIn = [&](Object& parent) {
    std::erase_if(parent.elements, [&](Object const& one) { return ids.contains(one.id); });
    for (Object& element : parent.elements) eraseIn(element);
  };
  eraseIn(root);
}

EventReply ToyApplication::remove(Value const& reference) {
  Found const found = find(reference);
  if (found.error) return *found.error;
  std::set<std::int64_t> ids;
  for (Object const* object : found.objects) ids.insert(object->id);
  erase(ids);
  return Value();
}

EventReply ToyApplication::handle(AppleEvent const& event) {
  hops_ = 0;
  isRunning = true;
  events.push_back(event);
  if (intercept) {
    if (auto reply = intercept(events.size(), event)) return *reply;
  }
  std::string const id = event.eventClass.text() + event.eventId.text();
  if (id == "coregetd") return get(event.directObject);
  if (id == "coresetd") return set(event);
  if (id == "corecnte") return count(event);
  if (id == "corecrel") return make(event);
  if (id == "coredelo") return remove(event.directObject);
  if (id == "coremove") return relocate(event, false);
  if (id == "coreclon") return relocate(event, true);
  if (id == "coredoex") return Value(!find(event.directObject).error.has_value());
  if (id == "GardWatr") {
    // Says what it was asked, so that a test sees every parameter.
    std::string text = "watered";
    if (auto const* list = event.directObject.as<List>()) text += " " + std::to_string(list->size());
    if (Value const* liters = parameterOf(event, "Litr"_code)) text += " with " + std::to_string(numberOf(*liters));
    if (Value const* gently = parameterOf(event, "Gent"_code)) text += *gently == Value(true) ? " gently" : " roughly";
    return Value(text);
  }
  return EventError{errors::kEventNotHandled, "", event.directObject};
}

}  // namespace morla::applescript::test
