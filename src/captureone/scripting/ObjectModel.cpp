#include "captureone/scripting/ObjectModel.h"

#include <cassert>
#include <utility>

#include "captureone/scripting/Conversion.h"
#include "captureone/scripting/ProcessCommand.h"

namespace morla::captureone {

using applescript::AppleEvent;
using applescript::Code;
using applescript::Considerations;
using applescript::EventError;
using applescript::EventReply;
using applescript::KeyForm;
using applescript::List;
using applescript::Record;
using applescript::SpecifierPointer;
using applescript::TypeCode;
using applescript::Value;

namespace {

Terms termsOf(std::string_view table) {
  auto parsed = applescript::parseDictionary(table);
  assert(parsed.dictionary.has_value());
  return Terms(parsed.dictionary ? *std::move(parsed.dictionary) : applescript::Dictionary{});
}

Value const* parameter(AppleEvent const& event, Code key) {
  for (auto const& [code, value] : event.parameters) {
    if (code == key) return &value;
  }
  return nullptr;
}

/// What the event is about: its direct object or, when it has none, the object of the `tell` that it was sent from.
Value const& subject(AppleEvent const& event) {
  auto const* tellTarget = event.directObject.isNull() ? parameter(event, Code("subj")) : nullptr;
  return tellTarget == nullptr ? event.directObject : *tellTarget;
}

EventError missingParameter(std::string const& what) {
  return {applescript::errors::kParameterMissing, "The " + what + " parameter is missing.", {}};
}

}  // namespace

ObjectModel::ObjectModel(Model& model, ApplicationIdentity identity, std::string_view dictionary, Hooks hooks)
    : model_(model),
      terms_(termsOf(dictionary)),
      classes_(makeServedClasses(model, std::move(identity))),
      resolver_(terms_, classes_),
      hooks_(std::move(hooks)) {}

EventReply ObjectModel::handle(AppleEvent const& event) {
  Code const family = event.eventClass;
  Code const id = event.eventId;
  if (family == Code("core")) {
    if (id == Code("getd")) return get(event);
    if (id == Code("setd")) return set(event);
    if (id == Code("cnte")) return count(event);
    if (id == Code("doex")) return exists(event);
    if (id == Code("crel")) return make(event);
    if (id == Code("delo")) return remove(event);
  }
  if (family == Code("Capt") && id == Code("proc")) return process(event, resolver_, model_);
  if (family == Code("aevt") && id == Code("quit")) {
    if (hooks_.quit) hooks_.quit();
    return Value();
  }
  return EventError{applescript::errors::kEventNotHandled,
                    "The simulator doesn’t understand the event " + family.text() + "/" + id.text() + ".",
                    event.directObject};
}

EventReply ObjectModel::contentOf(Item const& item, Value const& offender) const {
  Reading reading = Content(Value());
  if (auto const* property = std::get_if<PropertyReference>(&item)) {
    reading = resolver_.read(*property, offender);
  } else {
    reading = Content(std::get<ObjectReference>(item));
  }
  if (auto* error = std::get_if<EventError>(&reading)) return *std::move(error);
  auto& content = std::get<Content>(reading);
  if (auto* value = std::get_if<Value>(&content)) return *std::move(value);
  auto const& object = std::get<ObjectReference>(content);
  return resolver_.served(object.type)->specifier(object);
}

EventReply ObjectModel::get(AppleEvent const& event) {
  auto resolved = resolver_.resolve(event.directObject, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  auto const& found = std::get<Found>(resolved);
  List all;
  for (auto const& item : found.items) {
    auto content = contentOf(item, event.directObject);
    if (found.number == Found::Number::one || std::holds_alternative<EventError>(content)) return content;
    all.push_back(std::get<Value>(std::move(content)));
  }
  return Value(std::move(all));
}

Reading ObjectModel::convert(Value const& value, std::string const& type, Considerations considerations) const {
  auto const* wanted = terms_.findClass(type);
  if (wanted == nullptr) {
    auto converted = convertTo(type, value, terms_);
    if (!converted) return failures::wrongType(value, type);
    return Content(*std::move(converted));
  }
  if (value.as<SpecifierPointer>() == nullptr) return failures::wrongType(value, type);
  auto resolved = resolver_.resolve(value, considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  auto const& found = std::get<Found>(resolved);
  if (found.number == Found::Number::many) return failures::wrongType(value, type);
  auto object = resolver_.object(found.items.front(), value);
  if (auto* error = std::get_if<EventError>(&object)) return *std::move(error);
  if (std::get<ObjectReference>(object).type != wanted->code) return failures::wrongType(value, type);
  return Content(std::get<ObjectReference>(std::move(object)));
}

EventReply ObjectModel::set(AppleEvent const& event) {
  auto const* data = parameter(event, Code("data"));
  if (data == nullptr) return missingParameter("“to”");
  auto resolved = resolver_.resolve(event.directObject, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);

  for (auto const& item : std::get<Found>(resolved).items) {
    auto const* place = std::get_if<PropertyReference>(&item);
    if (place == nullptr) return failures::cannotSet(event.directObject);
    if (auto failure = assign(*place, *data, event.directObject, event.considerations)) return *std::move(failure);
  }
  return Value();
}

Failure ObjectModel::assign(PropertyReference const& place, Value const& value, Value const& offender,
                            Considerations considerations) {
  if (!place.property->isWritable) return failures::notModifiable(offender);
  auto converted = convert(value, place.property->type, considerations);
  if (auto* error = std::get_if<EventError>(&converted)) return *std::move(error);
  auto failure =
      resolver_.served(place.owner.type)->write(place.owner, place.property->code, std::get<Content>(converted));
  if (failure) failure->offender = offender;
  return failure;
}

std::variant<ObjectReference, EventError> ObjectModel::containerFor(AppleEvent const& event) const {
  auto const* place = parameter(event, Code("insh"));
  if (place == nullptr) place = parameter(event, Code("subj"));
  Value const application;
  if (place == nullptr) place = &application;
  // "end of recipes of d": where in the row is not for scripts to say.
  if (auto const* insertion = place->as<Record>()) {
    for (auto const& each : *insertion) {
      if (each.key != applescript::RecordKey(Code("kobj"))) continue;
      place = &each.value;
      auto const* pointer = place->as<SpecifierPointer>();
      if (pointer != nullptr && (*pointer)->form == KeyForm::every) place = &(*pointer)->container;
      break;
    }
  }
  auto resolved = resolver_.resolve(*place, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  auto const& found = std::get<Found>(resolved);
  if (found.number == Found::Number::many) return failures::cannotMake(*place);
  return resolver_.object(found.items.front(), *place);
}

EventReply ObjectModel::make(AppleEvent const& event) {
  auto const* kind = parameter(event, Code("kocl"));
  auto const* wanted = kind == nullptr ? nullptr : kind->as<TypeCode>();
  if (kind == nullptr) return missingParameter("“new”");
  if (wanted == nullptr) return failures::wrongType(*kind, "type class");
  auto container = containerFor(event);
  if (auto* error = std::get_if<EventError>(&container)) return *std::move(error);
  auto const& owner = std::get<ObjectReference>(container);

  Record properties;
  if (auto const* given = parameter(event, Code("prdt"))) {
    if (given->as<Record>() == nullptr) return failures::wrongType(*given, "record");
    properties = *given->as<Record>();
  }
  std::string name;
  for (auto const& each : properties) {
    auto const* text = each.key == applescript::RecordKey(codes::kName) ? each.value.as<std::string>() : nullptr;
    if (text != nullptr) name = *text;
  }
  auto made = resolver_.served(owner.type)->make(owner, wanted->code, name);
  if (auto* error = std::get_if<EventError>(&made)) return *std::move(error);
  auto const& object = std::get<ObjectReference>(made);
  auto& served = *resolver_.served(object.type);
  for (auto const& each : properties) {
    auto const* code = std::get_if<Code>(&each.key);
    auto const* property = code == nullptr ? nullptr : terms_.findProperty(object.type, *code);
    Failure failure = property == nullptr ? Failure(failures::cannotSet(each.value))
                                          : assign({object, property}, each.value, each.value, event.considerations);
    if (!failure) continue;
    // Half an object is none.
    (void)served.remove(object);
    return *std::move(failure);
  }
  return served.specifier(object);
}

EventReply ObjectModel::remove(AppleEvent const& event) {
  Value const& target = subject(event);
  if (target.isNull()) return missingParameter("direct");
  auto resolved = resolver_.resolve(target, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  // All of them first: deleting one may move another.
  std::vector<ObjectReference> objects;
  for (auto const& item : std::get<Found>(resolved).items) {
    if (std::holds_alternative<PropertyReference>(item)) return failures::notModifiable(target);
    objects.push_back(std::get<ObjectReference>(item));
  }
  for (auto const& each : objects) {
    if (auto failure = resolver_.served(each.type)->remove(each)) {
      failure->offender = target;
      return *std::move(failure);
    }
  }
  return Value();
}

EventReply ObjectModel::count(AppleEvent const& event) {
  Value const& target = subject(event);
  auto resolved = resolver_.resolve(target, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
  auto const& found = std::get<Found>(resolved);
  auto const* each = parameter(event, Code("kocl"));
  if (each == nullptr) {
    // Without a class only a collection of objects can be counted.
    if (found.number == Found::Number::one) return missingParameter("“each”");
    return Value(static_cast<std::int64_t>(found.items.size()));
  }
  auto const* wanted = each->as<TypeCode>();
  if (wanted == nullptr) return failures::wrongType(*each, "type class");
  std::size_t total = 0;
  for (auto const& item : found.items) {
    auto const container = resolver_.object(item, target);
    if (auto const* error = std::get_if<EventError>(&container)) return *error;
    auto const elements = resolver_.elements(std::get<ObjectReference>(container), wanted->code, target);
    if (auto const* error = std::get_if<EventError>(&elements)) return *error;
    total += std::get<std::vector<ObjectReference>>(elements).size();
  }
  return Value(static_cast<std::int64_t>(total));
}

EventReply ObjectModel::exists(AppleEvent const& event) {
  namespace errors = applescript::errors;
  auto const isAbsence = [](EventError const& error) {
    return error.number == errors::kNoSuchObject || error.number == errors::kInvalidIndex;
  };
  Value const& target = subject(event);
  auto resolved = resolver_.resolve(target, event.considerations);
  if (auto* error = std::get_if<EventError>(&resolved)) {
    if (isAbsence(*error)) return Value(false);
    return *std::move(error);
  }
  auto const& found = std::get<Found>(resolved);
  if (found.number == Found::Number::many) return Value(!found.items.empty());
  auto const* place = std::get_if<PropertyReference>(&found.items.front());
  if (place == nullptr) return Value(true);
  auto reading = resolver_.read(*place, target);
  if (auto* error = std::get_if<EventError>(&reading)) {
    if (isAbsence(*error)) return Value(false);
    return *std::move(error);
  }
  auto const& content = std::get<Content>(reading);
  if (auto const* value = std::get_if<Value>(&content)) return Value(!value->isMissing());
  auto const& object = std::get<ObjectReference>(content);
  return Value(resolver_.served(object.type)->exists(object));
}

}  // namespace morla::captureone
