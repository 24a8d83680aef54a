#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"
#include "applescript/Scoped.h"

namespace morla::applescript {

std::optional<Datum> Evaluator::run(std::vector<std::string> const& arguments) {
  top_ = instantiate(*script_, nullptr, nullptr);
  std::vector<Datum> texts;
  for (std::string const& argument : arguments) texts.emplace_back(argument);
  std::vector<Datum> parameters;
  parameters.emplace_back(state_->makeList(std::move(texts)));
  return runScript(top_, parameters).value;
}

std::optional<Value> Evaluator::exported(Datum const& result) {
  Datum const value = dereferenced(result);
  bool const isInner =
      value.as<ScriptReference>() != nullptr || value.as<HandlerValue>() != nullptr || value.as<Language>() != nullptr;
  if (value.isNull() || isInner) return std::nullopt;
  return toValue(value);
}

/// Makes the script object; its properties get their first values in the order in which they are written.
ScriptReference Evaluator::instantiate(Script const& code, ScriptReference const& outer,
                                       ActivationReference const& creator) {
  Level const level(*this);
  ScriptReference const script = state_->heap.makeScript(code, outer, creator);
  if (top_ == nullptr) top_ = script;
  // A property's first value may mention the variables of the handler that makes the script object, in any case.
  if (outer != nullptr) script->creator = current_;
  Scoped<ActivationReference> const inside(current_, state_->heap.makeActivation(code.initializers, script, script));
  Scoped<Datum> const target(target_, script);
  if (code.parent != nullptr) script->parent = dereferenced(locateValue(*code.parent));
  for (ScriptMember const& member : code.members) {
    if (member.script != nullptr) {
      script->put(member.key, instantiate(*member.script, script, nullptr));
    } else {
      script->put(member.key, evaluate(*member.value));
    }
  }
  script->creator = creator;
  return script;
}

Evaluator::Outcome Evaluator::runScript(ScriptReference const& script, std::vector<Datum> const& arguments) {
  Level const level(*this);
  Handler const& handler = script->code->run;
  Scoped<ActivationReference> const inside(current_, state_->heap.makeActivation(handler.routine, script, script));
  Scoped<Datum> const target(target_, script);
  if (script->code->isRunImplied) script->runVariables = current_;
  if (!handler.parameters.empty()) bindParameters(handler, arguments);
  return execute(handler.body);
}

/// In the script object itself, in what it has as a property, in its parent, and so on.
Evaluator::Found Evaluator::findHandler(ScriptReference const& receiver, std::string_view key) const {
  std::size_t generations = 0;
  for (ScriptReference const* script = &receiver; script != nullptr; script = (*script)->parent.as<ScriptReference>()) {
    if (++generations > state_->limits.depth)
      raise(errors::kNestedTooDeeply, "The script object has too many parents.");
    auto const handler = (*script)->code->handlers.find(key);
    if (handler != (*script)->code->handlers.end()) return {&handler->second, *script, receiver};
    Datum const* const property = (*script)->find(key);
    auto const* value = property == nullptr ? nullptr : property->as<HandlerValue>();
    if (value != nullptr) return {value->handler, value->home, receiver};
  }
  return {};
}

/// Whom a call means: the one it names, the tell's target, the script object that it stands in or one around that.
Evaluator::Found Evaluator::findHandler(tree::HandlerCall const& node) {
  if (node.isContinue) {
    auto const* parent = current_->home->parent.as<ScriptReference>();
    Found found = parent == nullptr ? Found{} : findHandler(*parent, node.key);
    found.me = current_->me;
    return found;
  }
  Datum const receiver = node.receiver == nullptr ? target_ : dereferenced(locateValue(*node.receiver));
  if (auto const* object = receiver.as<ApplicationObject>()) {
    // The call belongs to the target, and no application has handlers of a script's author.
    ScriptError error;
    error.number = errors::kEventNotHandled;
    error.brief = "Can’t continue " + node.name + ".";
    error.applicationName = object->application->displayName();
    error.isFromApplication = true;
    throw error;
  }
  auto const* script = receiver.as<ScriptReference>();
  if (script != nullptr) {
    Found found = findHandler(*script, node.key);
    if (found.handler != nullptr) return found;
  }
  if (node.receiver != nullptr && (script == nullptr || *script != current_->me)) {
    raise(errors::kEventNotHandled,
          sourceText(receiver, *state_) + " doesn’t understand the “" + node.name + "” message.", receiver);
  }
  if (Found found = findHandler(current_->me, node.key); found.handler != nullptr) return found;
  for (ScriptReference const* outer = &current_->home; *outer != nullptr; outer = &(*outer)->outer) {
    if (Found found = findHandler(*outer, node.key); found.handler != nullptr) return found;
    if ((*outer)->creator == nullptr) continue;
    Found found = findHandler((*outer)->creator->me, node.key);
    if (found.handler != nullptr) return found;
  }
  return {};
}

Evaluator::Place Evaluator::at(tree::HandlerCall const& node) {
  Found const found = findHandler(node);
  if (found.handler == nullptr) {
    raise(errors::kEventNotHandled,
          sourceText(current_->me, *state_) + " doesn’t understand the “" + node.name + "” message.", current_->me);
  }
  return {call(found, argumentsFor(*found.handler, node))};
}

/// The arguments in the order of the handler's parameters; null where the call has none.
std::vector<Datum> Evaluator::argumentsFor(Handler const& handler, tree::HandlerCall const& node) {
  std::vector<Datum> arguments;
  if (!node.isLabelled) {
    for (ExpressionPointer const& argument : node.arguments) arguments.push_back(evaluate(*argument));
    return arguments;
  }
  Datum direct;
  if (node.direct != nullptr) direct = evaluate(*node.direct);
  std::vector<std::pair<std::string, Datum>> labelled;
  for (auto const& [label, argument] : node.labelled) labelled.emplace_back(label, evaluate(*argument));
  for (HandlerParameter const& parameter : handler.parameters) {
    Datum value = parameter.label.empty() ? direct : Datum();
    for (auto const& [label, argument] : labelled) {
      if (label == parameter.label) value = argument;
    }
    if (value.isNull() && parameter.standard == nullptr) {
      std::string const label = parameter.label.empty() ? "direct" : parameter.label;
      raise(errors::kParameterMissing, "The " + label + " parameter is missing for " + handler.name + ".");
    }
    arguments.push_back(std::move(value));
  }
  return arguments;
}

Datum Evaluator::call(Found const& found, std::vector<Datum> const& arguments) {
  Handler const& handler = *found.handler;
  // What surrounds the call is no business of the handler: it has its own variables, target and considerations.
  Scoped<ActivationReference> const inside(current_,
                                           state_->heap.makeActivation(handler.routine, found.home, found.me));
  Scoped<Datum> const target(target_, found.me);
  Scoped<Considerations> const considerations(state_->considerations, Considerations{});
  Scoped<bool> const responses(state_->ignoresResponses, false);
  Scoped<std::chrono::milliseconds> const timeout(timeout_, kDefaultReplyTimeout);
  bindParameters(handler, arguments);
  Outcome outcome = execute(handler.body);
  return outcome.value ? *std::move(outcome.value) : Datum();
}

void Evaluator::bindParameters(Handler const& handler, std::vector<Datum> const& arguments) {
  std::size_t required = 0;
  for (HandlerParameter const& parameter : handler.parameters) {
    if (parameter.standard == nullptr) ++required;
  }
  // More than it takes are no error: functions that are handed over get more than they ask for.
  if (arguments.size() < required) {
    std::string names;
    for (HandlerParameter const& parameter : handler.parameters) {
      auto const* name = parameter.pattern->as<tree::Variable>();
      names += (names.empty() ? "" : ", ") + (name == nullptr ? "{}" : name->name);
    }
    Datum const given = state_->makeList(arguments);
    raise(errors::kWrongArguments,
          sourceText(given, *state_) + " doesn’t match the parameters {" + names + "} for " + handler.name + ".",
          given);
  }
  for (std::size_t i = 0; i < handler.parameters.size(); ++i) {
    HandlerParameter const& parameter = handler.parameters[i];
    bool const isGiven = i < arguments.size() && (!arguments[i].isNull() || parameter.standard == nullptr);
    Datum value = isGiven ? arguments[i] : evaluate(*parameter.standard);
    if (parameter.type) value = coerce(value, *parameter.type, *state_);
    // A parameter hides a property of the same name.
    if (auto const* name = parameter.pattern->as<tree::Variable>()) {
      current_->slots[name->slot] = {std::move(value), Activation::Scope::local};
    } else {
      setTarget(*parameter.pattern, std::move(value));
    }
  }
}

/// A property of the script object or of its parents; a handler is one, too.
std::optional<Datum> Evaluator::propertyOfScript(ScriptReference const& script, RecordKey const& key) {
  if (key == RecordKey("parent")) {
    return script->parent.isNull() ? Datum(Language{}) : script->parent;
  }
  Datum last = script;
  std::size_t generations = 0;
  for (ScriptReference const* object = &script; object != nullptr; object = (*object)->parent.as<ScriptReference>()) {
    if (++generations > state_->limits.depth)
      raise(errors::kNestedTooDeeply, "The script object has too many parents.");
    if (Datum const* property = (*object)->find(key)) return *property;
    if (auto const* name = std::get_if<std::string>(&key)) {
      auto const handler = (*object)->code->handlers.find(*name);
      if (handler != (*object)->code->handlers.end()) return HandlerValue{&handler->second, *object};
    }
    last = *object;
  }
  auto const* code = std::get_if<Code>(&key);
  if (code == nullptr || *code == "pcls"_code || *code == "pcnt"_code) return std::nullopt;
  if (*code == "pnam"_code && !script->code->name.empty()) return Datum(script->code->name);
  Datum const& parent = last.as<ScriptReference>()->get()->parent;
  if (auto const* application = parent.as<ApplicationObject>()) {
    return fetched(object(*application, {"prop"_code, KeyForm::property, TypeCode{*code}, {}}));
  }
  return propertyOfValue(Language{}, key, *state_);
}

}  // namespace morla::applescript
