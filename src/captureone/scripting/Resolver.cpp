#include "captureone/scripting/Resolver.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "base/unicode/Unicode.h"
#include "captureone/scripting/Classes.h"
#include "captureone/scripting/TestClause.h"

namespace morla::captureone {

using applescript::Code;
using applescript::Considerations;
using applescript::EventError;
using applescript::KeyForm;
using applescript::Record;
using applescript::Specifier;
using applescript::SpecifierPointer;
using applescript::TypeCode;
using applescript::Value;

namespace {

/// What every object has, and no table says.
Terms::Property const kClassOfObject{"item", "class", codes::kClass, "any", true, false};
Terms::Property const kPropertiesOfObject{"item", "properties", Code("pALL"), "record", true, false};

}  // namespace

struct Resolver::Request {
  Specifier const& specifier;
  Value const& value;  ///< the same specifier, as errors name it
  Considerations considerations;
};

namespace {

std::optional<std::int64_t> wholeNumber(Value const& value) {
  if (auto const* integer = value.as<std::int64_t>()) return *integer;
  if (auto const* real = value.as<double>(); real != nullptr && std::trunc(*real) == *real && std::abs(*real) < 1e15) {
    return static_cast<std::int64_t>(*real);
  }
  return {};
}

/// From 1, or from -1 backwards, to a place in a list of `size`.
std::optional<std::size_t> placeOf(std::int64_t index, std::size_t size) {
  auto const length = static_cast<std::int64_t>(size);
  auto const place = index > 0 ? index - 1 : length + index;
  if (index == 0 || place < 0 || place >= length) return {};
  return static_cast<std::size_t>(place);
}

Value const* field(Record const& record, Code key) {
  for (auto const& each : record) {
    if (each.key == applescript::RecordKey(key)) return &each.value;
  }
  return nullptr;
}

/// "first variant whose …": of the objects that pass the test, not inside of each of them.
bool isChoice(Specifier const& specifier) {
  auto const* container = specifier.container.as<SpecifierPointer>();
  return container != nullptr && (*container)->form == KeyForm::test && (*container)->wanted == specifier.wanted &&
         specifier.form != KeyForm::property;
}

/// Where a range begins or ends: an index, or an index specifier that is relative to the range's container.
std::optional<std::int64_t> boundOf(Value const* bound, Code wanted) {
  if (bound == nullptr) return {};
  auto const* pointer = bound->as<SpecifierPointer>();
  if (pointer == nullptr) return wholeNumber(*bound);
  Specifier const& specifier = **pointer;
  if (specifier.form != KeyForm::index || specifier.wanted != wanted || !specifier.container.isNull()) return {};
  return wholeNumber(specifier.selector);
}

}  // namespace

ServedClass* Resolver::served(Code code) const {
  auto const found = std::ranges::find_if(classes_, [code](auto const& each) { return each->code() == code; });
  return found == classes_.end() ? nullptr : found->get();
}

Reading Resolver::readAll(ObjectReference const& object, Value const& offender) const {
  Record all{{codes::kClass, TypeCode{object.type}}};
  auto const* type = terms_.findClass(object.type);
  for (auto const& each : terms_.dictionary().properties) {
    if (type == nullptr || each.ownerClass != type->name || !each.isReadable) continue;
    auto reading = read({object, &each}, offender);
    if (auto* error = std::get_if<EventError>(&reading)) return *std::move(error);
    auto const* held = std::get_if<ObjectReference>(&std::get<Content>(reading));
    all.push_back({each.code, held == nullptr ? std::get<Value>(std::get<Content>(std::move(reading)))
                                              : served(held->type)->specifier(*held)});
  }
  return Value(std::move(all));
}

Reading Resolver::read(PropertyReference const& reference, Value const& offender) const {
  if (reference.property == &kClassOfObject) return Value(TypeCode{reference.owner.type});
  if (reference.property == &kPropertiesOfObject) return readAll(reference.owner, offender);
  if (!reference.property->isReadable) return failures::cannotGet(offender);
  auto const* owner = served(reference.owner.type);
  if (owner == nullptr) return failures::notSimulated("such class", offender);
  auto reading = owner->read(reference.owner, reference.property->code);
  if (auto* error = std::get_if<EventError>(&reading); error != nullptr && !offender.isNull()) {
    error->offender = offender;
  }
  return reading;
}

std::variant<ObjectReference, EventError> Resolver::object(Item const& item, Value const& offender) const {
  if (auto const* object = std::get_if<ObjectReference>(&item)) return *object;
  auto const reading = read(std::get<PropertyReference>(item), offender);
  if (auto const* error = std::get_if<EventError>(&reading)) return *error;
  auto const* held = std::get_if<ObjectReference>(&std::get<Content>(reading));
  if (held == nullptr) return failures::cannotGet(offender);
  return *held;
}

std::variant<std::vector<ObjectReference>, EventError> Resolver::elements(ObjectReference const& container, Code wanted,
                                                                          Value const& offender) const {
  if (!terms_.hasElements(container.type, wanted)) return failures::cannotGet(offender);
  auto const* owner = served(container.type);
  auto found = owner == nullptr ? std::nullopt : owner->elements(container, wanted);
  if (!found) return failures::notSimulated(terms_.findClass(wanted)->name, offender);
  return *std::move(found);
}

bool Resolver::hasName(ObjectReference const& object, Request const& request) const {
  auto const* wanted = request.specifier.selector.as<std::string>();
  auto const* owner = served(object.type);
  if (wanted == nullptr || owner == nullptr) return false;
  auto const reading = owner->read(object, codes::kName);
  auto const* content = std::get_if<Content>(&reading);
  auto const* value = content == nullptr ? nullptr : std::get_if<Value>(content);
  auto const* text = value == nullptr ? nullptr : value->as<std::string>();
  if (text == nullptr) return false;
  bool const ignoresCase = (request.considerations.bits & Considerations::kIgnoreCase) != 0;
  return ignoresCase ? unicode::equalsIgnoringCase(*text, *wanted) : unicode::equals(*text, *wanted);
}

std::variant<Found, EventError> Resolver::elementWithId(Request const& request,
                                                        ObjectReference const& container) const {
  auto const wanted = request.specifier.wanted;
  if (!terms_.hasElements(container.type, wanted)) return failures::cannotGet(request.value);
  auto const* owner = served(container.type);
  auto const* id = request.specifier.selector.as<std::string>();
  auto found = owner == nullptr || id == nullptr ? std::nullopt : owner->elementWithId(container, wanted, *id);
  if (!found) return failures::cannotGet(request.value);
  return Found{Found::Number::one, {*std::move(found)}};
}

Reading Resolver::operand(Value const& value, Request const& request, ObjectReference const& examined) const {
  auto const* type = value.as<TypeCode>();
  bool const isExamined = type != nullptr && type->code == codes::kExamined;
  if (!isExamined && value.as<SpecifierPointer>() == nullptr) return Content(value);
  auto resolved = resolve(value, request.considerations, &examined);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  auto const& found = std::get<Found>(resolved);
  if (found.number == Found::Number::many) return failures::wrongType(value, "one object");
  auto const& item = found.items.front();
  if (auto const* place = std::get_if<PropertyReference>(&item)) return read(*place, value);
  return Content(std::get<ObjectReference>(item));
}

std::variant<Found, EventError> Resolver::elementsThatPass(Request const& request,
                                                           std::vector<ObjectReference> const& all) const {
  Found found{Found::Number::many, {}};
  for (auto const& each : all) {
    auto const verdict = holds(
        request.specifier.selector, [&](Value const& value) { return operand(value, request, each); },
        request.considerations);
    if (auto const* error = std::get_if<EventError>(&verdict)) return *error;
    if (std::get<bool>(verdict)) found.items.emplace_back(each);
  }
  return found;
}

std::variant<Found, EventError> Resolver::property(Request const& request, ObjectReference const& container) const {
  auto const* code = request.specifier.selector.as<TypeCode>();
  auto const* found = code == nullptr ? nullptr : terms_.findProperty(container.type, code->code);
  if (code != nullptr && found == nullptr) {
    if (code->code == kClassOfObject.code) found = &kClassOfObject;
    if (code->code == kPropertiesOfObject.code) found = &kPropertiesOfObject;
  }
  if (found == nullptr) return failures::cannotGet(request.value);
  return Found{Found::Number::one, {PropertyReference{container, found}}};
}

std::variant<Found, EventError> Resolver::element(Request const& request, ObjectReference const& container) const {
  Specifier const& specifier = request.specifier;
  if (specifier.form == KeyForm::id) return elementWithId(request, container);
  auto listed = elements(container, specifier.wanted, request.value);
  if (auto* error = std::get_if<EventError>(&listed)) return *std::move(error);
  return among(request, std::get<std::vector<ObjectReference>>(listed));
}

std::variant<Found, EventError> Resolver::among(Request const& request, std::vector<ObjectReference> const& all) const {
  Specifier const& specifier = request.specifier;
  switch (specifier.form) {
    case KeyForm::every:
      return Found{Found::Number::many, {all.begin(), all.end()}};
    case KeyForm::index: {
      auto const index = wholeNumber(specifier.selector);
      if (!index) return failures::wrongType(request.value, "integer");
      auto const place = placeOf(*index, all.size());
      if (!place) return failures::invalidIndex(request.value);
      return Found{Found::Number::one, {all[*place]}};
    }
    case KeyForm::range: {
      auto const* bounds = specifier.selector.as<Record>();
      if (bounds == nullptr) return failures::wrongType(request.value, "record");
      auto const from = boundOf(field(*bounds, Code("star")), specifier.wanted);
      auto const to = boundOf(field(*bounds, Code("stop")), specifier.wanted);
      if (!from || !to) return failures::wrongType(request.value, "integer");
      auto const first = placeOf(*from, all.size());
      auto const last = placeOf(*to, all.size());
      if (!first || !last) return failures::invalidIndex(request.value);
      auto const [low, high] = std::minmax(*first, *last);
      return Found{
          Found::Number::many,
          {all.begin() + static_cast<std::ptrdiff_t>(low), all.begin() + static_cast<std::ptrdiff_t>(high) + 1}};
    }
    case KeyForm::name: {
      auto const found = std::ranges::find_if(all, [&](auto const& each) { return hasName(each, request); });
      if (found == all.end()) return failures::cannotGet(request.value);
      return Found{Found::Number::one, {*found}};
    }
    case KeyForm::test:
      return elementsThatPass(request, all);
    case KeyForm::id: {
      auto const* id = specifier.selector.as<std::string>();
      auto const found = id == nullptr ? all.end() : std::ranges::find(all, *id, &ObjectReference::id);
      if (found == all.end()) return failures::cannotGet(request.value);
      return Found{Found::Number::one, {*found}};
    }
    case KeyForm::relative:
    case KeyForm::property:
      break;
  }
  return failures::notSimulated("way to pick objects by '" + std::string(textOf(specifier.form)) + "'", request.value);
}

std::variant<Found, EventError> Resolver::resolve(Value const& value, Considerations considerations) const {
  return resolve(value, considerations, nullptr);
}

std::variant<Found, EventError> Resolver::resolve(Value const& value, Considerations considerations,
                                                  ObjectReference const* examined) const {
  auto const* type = value.as<TypeCode>();
  if (examined != nullptr && type != nullptr && type->code == codes::kExamined) {
    return Found{Found::Number::one, {*examined}};
  }
  if (value.isNull()) return Found{Found::Number::one, {ObjectReference{codes::kApplication, {}, {}}}};
  auto const* pointer = value.as<SpecifierPointer>();
  if (pointer == nullptr) return failures::cannotGet(value);
  Specifier const& specifier = **pointer;
  Request const request{specifier, value, considerations};

  auto containers = resolve(specifier.container, considerations, examined);
  if (auto* error = std::get_if<EventError>(&containers)) return *std::move(error);
  auto const& outer = std::get<Found>(containers);
  if (isChoice(specifier)) {
    std::vector<ObjectReference> all;
    for (auto const& item : outer.items) all.push_back(std::get<ObjectReference>(item));
    return among(request, all);
  }

  Found found{outer.number, {}};
  for (auto const& item : outer.items) {
    auto const container = object(item, specifier.container);
    if (auto const* error = std::get_if<EventError>(&container)) return *error;
    auto const& owner = std::get<ObjectReference>(container);
    auto inner = specifier.form == KeyForm::property ? property(request, owner) : element(request, owner);
    if (auto* error = std::get_if<EventError>(&inner)) return *std::move(error);
    auto& more = std::get<Found>(inner);
    if (more.number == Found::Number::many) found.number = Found::Number::many;
    std::ranges::move(more.items, std::back_inserter(found.items));
  }
  return found;
}

}  // namespace morla::captureone
