#include "applescript/Calendar.h"
#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/ErrorTexts.h"
#include "applescript/Evaluator.h"

namespace morla::applescript {

void Evaluator::requireLocated(TargetApplication& application) {
  if (state_->applications.locate(application)) return;
  bool const isByName = application.reference.kind == ApplicationReference::Kind::name;
  raise(errors::kNoSuchObject,
        std::string("Can’t get application ") + (isByName ? "" : "id ") + "\"" + application.reference.text + "\".");
}

/// One `get` for the value of an object; the application itself is its own value.
Datum Evaluator::fetched(Datum const& datum) {
  auto const* object = datum.as<ApplicationObject>();
  if (object == nullptr || object->specifier == nullptr) return datum;
  return send(*object->application, "core"_code, "getd"_code, toValue(datum));
}

Datum Evaluator::send(TargetApplication& application, Code eventClass, Code eventId, Value direct,
                      std::vector<std::pair<Code, Value>> parameters) {
  AppleEvent event;
  event.eventClass = eventClass;
  event.eventId = eventId;
  event.directObject = std::move(direct);
  event.parameters = std::move(parameters);
  return send(application, std::move(event));
}

Datum Evaluator::send(TargetApplication& application, AppleEvent event) {
  requireLocated(application);
  event.timeout = timeout_;
  event.considerations = state_->considerations;
  bool const asks = event.eventClass == "core"_code &&
                    (event.eventId == "getd"_code || event.eventId == "cnte"_code || event.eventId == "doex"_code);
  event.wantsReply = asks || !state_->ignoresResponses;
  std::shared_ptr<TargetApplication> const shared = state_->applications.named(application.reference);
  EventReply const reply = state_->host.send(*application.information, event);
  if (!event.wantsReply) return {};
  if (auto const* error = std::get_if<EventError>(&reply)) raiseReply(shared, *error, event);
  return toDatum(std::get<Value>(reply), shared);
}

/// What the language itself says where the application said nothing.
[[nodiscard]] static std::string defaultMessage(std::int64_t number, std::string const& object,
                                                std::string const& applicationName, std::string const& command) {
  switch (number) {
    case errors::kCannotCoerce:
      if (object.empty()) break;
      return "Can’t make " + object + " into the expected type.";
    case errors::kParameterMissing:
      return "Some parameter is missing for “" + command + "”.";
    case errors::kEventNotHandled:
      return (object.empty() ? "«script»" : object) + " doesn’t understand the “" + command + "” message.";
    case errors::kInvalidIndex:
      return "Can’t get " + (object.empty() ? "an object" : object) + ". Invalid index.";
    case errors::kNoSuchObject:
      return "Can’t get " + (object.empty() ? "an object" : object) + ".";
    case errors::kNotPermitted:
    case errors::kConsentPending:
      return "Not authorized to send Apple events to " + applicationName + ".";
    case errors::kNotModifiable:
    case errors::kCannotSet:
      return "Can’t set " + (object.empty() ? "an object" : object) + ".";
    default:
      break;
  }
  return errorText(number);
}

void Evaluator::raiseReply(std::shared_ptr<TargetApplication> const& application, EventError const& reply,
                           AppleEvent const& event) {
  ScriptError error;
  error.number = reply.number;
  error.applicationName = application->displayName();
  // A refusal is the system's word, not the application's.
  error.isFromApplication = reply.number != errors::kNotPermitted && reply.number != errors::kConsentPending;
  Value const& about = reply.offender.isNull() ? event.directObject : reply.offender;
  error.offender = toDatum(about, application);
  error.brief = reply.message;
  if (error.brief.empty()) {
    std::string const object = about.isNull() ? std::string() : sourceText(error.offender, *state_);
    std::optional<std::string> command;
    if (application->terms != nullptr) command = application->terms->commandName(event.eventClass, event.eventId);
    if (!command) command = standardTerms().commandName(event.eventClass, event.eventId);
    if (!command) command = event.eventId == "getd"_code ? "get" : event.eventId == "setd"_code ? "set" : "";
    error.brief = defaultMessage(reply.number, object, application->displayName(), *command);
  }
  throw error;
}

Value Evaluator::toValue(Datum const& datum, std::size_t depth) {
  if (depth > state_->limits.depth) raise(errors::kNestedTooDeeply, "The value is nested too deeply.");
  state_->spend();
  return std::visit(
      [this, inner = depth + 1]<typename T>(T const& held) -> Value {
        if constexpr (std::same_as<T, Text>) {
          return held.string();
        } else if constexpr (std::same_as<T, ListReference>) {
          List items;
          items.reserve(held->items.size());
          for (Datum const& item : held->items) items.push_back(toValue(item, inner));
          return items;
        } else if constexpr (std::same_as<T, RecordReference>) {
          Record fields;
          for (auto const& [key, value] : held->fields) fields.push_back({key, toValue(value, inner)});
          return fields;
        } else if constexpr (std::same_as<T, ApplicationObject>) {
          return containerValue(held);
        } else if constexpr (std::same_as<T, ItemReference> || std::same_as<T, VariableReference> ||
                             std::same_as<T, PropertyReference>) {
          return toValue(dereferenced(held), inner);
        } else if constexpr (std::same_as<T, ScriptReference> || std::same_as<T, HandlerValue> ||
                             std::same_as<T, Language> || std::same_as<T, ActivationReference>) {
          raise(errors::kCannotCoerce, "A script object cannot be sent.");
        } else if constexpr (std::same_as<T, Date>) {
          return dateText(held);
        } else if constexpr (std::same_as<T, Measure>) {
          return held.amount;
        } else if constexpr (std::same_as<T, InsertionPoint>) {
          return Record{{"kobj"_code, toValue(*held.object, inner)}, {"kpos"_code, Enumerator{held.position}}};
        } else {
          return held;
        }
      },
      datum.data);
}

Datum Evaluator::toDatum(Value const& value, std::shared_ptr<TargetApplication> const& application, std::size_t depth) {
  if (depth > state_->limits.depth) raise(errors::kNestedTooDeeply, "The value is nested too deeply.");
  state_->spend();
  if (auto const* integer = value.as<std::int64_t>()) {
    constexpr std::int64_t kLargestInteger = 536870911;
    if (*integer > kLargestInteger || *integer < -kLargestInteger) return static_cast<double>(*integer);
    return *integer;
  }
  if (auto const* text = value.as<std::string>()) return state_->makeText(*text);
  if (auto const* list = value.as<List>()) {
    std::vector<Datum> items;
    items.reserve(list->size());
    for (Value const& item : *list) items.push_back(toDatum(item, application, depth + 1));
    return state_->makeList(std::move(items));
  }
  if (auto const* record = value.as<Record>()) {
    RecordObject::Fields fields;
    for (RecordField const& field : *record) {
      fields.emplace_back(field.key, toDatum(field.value, application, depth + 1));
    }
    return state_->heap.makeRecord(std::move(fields));
  }
  if (auto const* specifier = value.as<SpecifierPointer>()) return ApplicationObject{application, *specifier};
  if (auto const* boolean = value.as<bool>()) return *boolean;
  if (auto const* real = value.as<double>()) return *real;
  if (auto const* type = value.as<TypeCode>()) return *type;
  if (auto const* enumerator = value.as<Enumerator>()) return *enumerator;
  if (auto const* file = value.as<FileUrl>()) return *file;
  if (auto const* alias = value.as<Alias>()) return *alias;
  return {};
}

}  // namespace morla::applescript
