#include "applescript/ScriptInstance.h"

#include <utility>

namespace morla::applescript {

template <typename T>
static void surrenderIfAny(std::shared_ptr<T>& reference, std::vector<Datum>& out) {
  if (reference != nullptr) out.emplace_back(std::move(reference));
  reference.reset();
}

Activation::Activation(Heap& heap, Routine const& theRoutine, ScriptReference theHome, ScriptReference receiver)
    : Aggregate(heap),
      routine(&theRoutine),
      home(std::move(theHome)),
      me(std::move(receiver)),
      slots(theRoutine.slots.size()) {
  account(sizeof(Activation) + slots.size() * sizeof(Slot));
}

Activation::~Activation() {
  heap().bury(*this);
}

void Activation::surrender(std::vector<Datum>& out) {
  for (Slot& slot : slots) {
    if (!slot.value.isNull()) out.push_back(std::move(slot.value));
  }
  slots.clear();
  surrenderIfAny(home, out);
  surrenderIfAny(me, out);
}

Activation::Slot* Activation::find(std::string_view name) {
  auto const found = routine->slots.find(name);
  return found == routine->slots.end() || found->second >= slots.size() ? nullptr : &slots[found->second];
}

ScriptInstance::ScriptInstance(Heap& heap, Script const& theCode, ScriptReference theOuter,
                               ActivationReference theCreator)
    : Aggregate(heap), code(&theCode), outer(std::move(theOuter)), creator(std::move(theCreator)) {
  account(sizeof(ScriptInstance) + theCode.members.size() * sizeof(Datum));
}

ScriptInstance::~ScriptInstance() {
  heap().bury(*this);
}

void ScriptInstance::surrender(std::vector<Datum>& out) {
  for (auto& member : named) out.push_back(std::move(member.second));
  for (auto& member : coded) out.push_back(std::move(member.second));
  named.clear();
  coded.clear();
  out.push_back(std::exchange(parent, Datum()));
  surrenderIfAny(outer, out);
  surrenderIfAny(creator, out);
  surrenderIfAny(runVariables, out);
}

Datum* ScriptInstance::find(std::string_view name) {
  if (auto const found = named.find(name); found != named.end()) return &found->second;
  Activation::Slot* const slot = runVariables == nullptr ? nullptr : runVariables->find(name);
  bool const isHere = slot != nullptr && slot->scope == Activation::Scope::open && !slot->value.isNull();
  return isHere ? &slot->value : nullptr;
}

Datum* ScriptInstance::find(RecordKey const& key) {
  if (auto const* name = std::get_if<std::string>(&key)) return find(std::string_view(*name));
  auto const found = coded.find(std::get<Code>(key));
  return found == coded.end() ? nullptr : &found->second;
}

void ScriptInstance::put(RecordKey const& key, Datum value) {
  if (auto const* term = std::get_if<Code>(&key)) {
    coded[*term] = std::move(value);
  } else {
    named[std::get<std::string>(key)] = std::move(value);
  }
}

ScriptReference Heap::makeScript(Script const& code, ScriptReference outer, ActivationReference creator) {
  return std::make_shared<ScriptInstance>(*this, code, std::move(outer), std::move(creator));
}

ActivationReference Heap::makeActivation(Routine const& routine, ScriptReference home, ScriptReference me) {
  return std::make_shared<Activation>(*this, routine, std::move(home), std::move(me));
}

}  // namespace morla::applescript
