#include "applescript/Coercion.h"
#include "applescript/Comparison.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"
#include "applescript/TextElements.h"

namespace morla::applescript {

/// `count of documents` is counted by the application, a value of the script here.
Evaluator::Place Evaluator::at(tree::Count const& node) {
  auto const* element = node.operand->as<tree::ElementOf>();
  if (element != nullptr && element->form == tree::ElementOf::Form::every && !isLanguageElement(element->type)) {
    Datum const container = dereferenced(locateValue(*element->container));
    if (auto const* object = container.as<ApplicationObject>()) {
      return {send(*object->application, "core"_code, "cnte"_code, containerValue(*object),
                   {{"kocl"_code, TypeCode{element->type}}})};
    }
  }
  Datum const value = dereferenced(evaluate(*node.operand));
  if (auto const* object = value.as<ApplicationObject>()) {
    return {send(*object->application, "core"_code, "cnte"_code, containerValue(*object),
                 {{"kocl"_code, TypeCode{"cobj"_code}}})};
  }
  if (auto const count = countOfValue(value)) return {*count};
  raise(errors::kEventNotHandled, sourceText(value, *state_) + " doesn’t understand the “count” message.", value);
}

Evaluator::Place Evaluator::at(tree::Exists const& node) {
  try {
    Place const place = locate(*node.operand);
    Datum const value = dereferenced(place.datum);
    auto const* object = value.as<ApplicationObject>();
    if (object == nullptr) return {true};
    if (object->specifier == nullptr) return {state_->applications.locate(*object->application)};
    return {coerceToBoolean(send(*object->application, "core"_code, "doex"_code, toValue(value)), *state_)};
  } catch (ScriptError const& error) {
    if (error.number == errors::kNoSuchObject && !error.isFinal && !error.isFromApplication) return {false};
    throw;
  }
}

Expression const* Evaluator::optionalParameter(tree::Command const& node, Code code) const {
  for (auto const& [name, value] : node.parameters) {
    if (name == code) return value.get();
  }
  return nullptr;
}

std::optional<Datum> Evaluator::scriptCommand(tree::Command const& node, Datum const& direct) {
  Datum const receiver = direct.isNull() ? target_ : direct;
  auto const* script = receiver.as<ScriptReference>();
  if (script == nullptr) return std::nullopt;
  Level const level(*this);
  if (node.eventClass == "aevt"_code && node.eventId == "oapp"_code) {
    return runScript(*script, {state_->makeList({})}).value.value_or(Datum());
  }
  Found const found = findHandler(*script, lowercaseKey(node.name));
  if (found.handler != nullptr) return call(found, std::vector<Datum>());
  // What nobody handles goes to the program that runs the script, which has nothing to do then.
  bool const isForTheProgram = node.eventClass == "misc"_code || node.eventClass == "aevt"_code;
  if (direct.isNull() && isForTheProgram) return Datum();
  return std::nullopt;
}

Expression const& Evaluator::parameter(tree::Command const& node, Code code) const {
  for (auto const& [name, value] : node.parameters) {
    if (name == code) return *value;
  }
  raise(errors::kParameterMissing, "A parameter of “" + node.name + "” is missing.");
}

/// /bin/sh runs the text; its output comes back with the language's own line ends and without the last one.
Datum Evaluator::shell(tree::Command const& node) {
  if (node.direct == nullptr) raise(errors::kParameterMissing, "“do shell script” needs a text.");
  Datum const text = coerce(operand(*node.direct), "ctxt"_code, *state_);
  bool altersLineEnds = true;
  for (auto const& [code, value] : node.parameters) {
    if (code == "alen"_code) altersLineEnds = condition(*value);
    bool const isPrivilege = code == "RAun"_code || code == "RApw"_code || code == "badm"_code;
    if (isPrivilege && !(code == "badm"_code && !condition(*value))) {
      raise(errors::kPrivilege, "“do shell script” runs with the rights of this process.");
    }
  }
  ShellResult const result = state_->host.runShell(text.as<Text>()->string());
  auto const converted = [altersLineEnds](std::string output) {
    if (!altersLineEnds) return output;
    for (char& c : output) {
      if (c == '\n') c = '\r';
    }
    if (output.ends_with('\r')) output.pop_back();
    return output;
  };
  if (result.status != 0) {
    std::string message = converted(result.errorOutput);
    if (message.empty()) message = converted(result.output);
    if (message.empty()) message = "The command exited with a non-zero status.";
    raise(result.status, std::move(message));
  }
  Datum const output = state_->makeText(converted(result.output));
  Expression const* type = optionalParameter(node, "rtyp"_code);
  if (type == nullptr) return output;
  Datum const wanted = operand(*type);
  auto const* code = wanted.as<TypeCode>();
  return code == nullptr ? output : coerce(output, code->code, *state_);
}

/// Where a text begins in another one, in characters from 1; 0 when it is not there.
Datum Evaluator::offset(tree::Command const& node) {
  Datum const part = coerce(operand(parameter(node, "psof"_code)), "ctxt"_code, *state_);
  Datum const whole = coerce(operand(parameter(node, "psin"_code)), "ctxt"_code, *state_);
  std::vector<std::string_view> const items =
      textItemsOf(whole.as<Text>()->view(), {part.as<Text>()->string()}, state_->considerations);
  if (part.as<Text>()->size() == 0 || items.size() < 2) return std::int64_t{0};
  return static_cast<std::int64_t>(charactersOf(items.front()).size()) + 1;
}

Evaluator::Place Evaluator::at(tree::Command const& node) {
  if (node.eventClass == "syso"_code && node.eventId == "exec"_code) return {shell(node)};
  if (node.eventClass == "syso"_code && node.eventId == "offs"_code) return {offset(node)};
  if (node.eventClass == "ascr"_code && node.eventId == "copy"_code) {
    return {copied(dereferenced(evaluate(*node.direct)))};
  }
  if (node.eventClass == "ascr"_code && node.eventId == "cmnt"_code) {
    if (node.direct != nullptr) state_->host.log(sourceText(dereferenced(evaluate(*node.direct)), *state_));
    return {};
  }
  if (isAddition(node)) return {addition(node)};
  Datum direct;
  if (node.direct != nullptr) direct = dereferenced(locateValue(*node.direct));
  if (auto done = scriptCommand(node, direct)) return {*std::move(done)};
  AppleEvent event;
  event.eventClass = node.eventClass;
  event.eventId = node.eventId;
  auto const* receiver = direct.as<ApplicationObject>();
  auto const* subject = target_.as<ApplicationObject>();
  for (auto const& [code, expression] : node.parameters) {
    event.parameters.emplace_back(code, toValue(dereferenced(locateValue(*expression))));
  }
  if (receiver == nullptr) receiver = subject;
  if (receiver == nullptr) {
    std::string const object = sourceText(direct.isNull() ? Datum(current_->me) : direct, *state_);
    raise(errors::kEventNotHandled, object + " doesn’t understand the “" + node.name + "” message.", direct);
  }
  if (!direct.isNull()) {
    event.directObject = toValue(direct);
  } else if (subject != nullptr && subject->specifier != nullptr) {
    event.parameters.emplace_back("subj"_code, toValue(target_));
  }
  return {send(*receiver->application, std::move(event))};
}

}  // namespace morla::applescript
