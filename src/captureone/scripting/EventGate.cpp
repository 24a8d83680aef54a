#include "captureone/scripting/EventGate.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace morla::captureone {

using applescript::AppleEvent;
using applescript::EventError;
using applescript::Value;

namespace {

/// Any number will do: what matters is that it is no text.
constexpr std::int64_t kIntegerReply = 400;

std::optional<Value> standInFor(Faults const& faults) {
  switch (faults.standIn()) {
    case StandIn::text:
      return faults.reply().empty() ? std::nullopt : std::optional(Value(faults.reply()));
    case StandIn::integer:
      return Value(kIntegerReply);
    case StandIn::missing:
      return Value::missing();
    case StandIn::nothing:
      return Value();
  }
  return std::nullopt;
}

}  // namespace

EventGate::EventGate(Model& model, Handler handler, World world)
    : model_(model), handler_(std::move(handler)), world_(std::move(world)) {}

void EventGate::handle(AppleEvent event, Answer answer) {
  auto const verdict = model_.faults().nextEvent();
  if (verdict.delay.count() == 0) {
    conclude(verdict.outcome, event, answer);
    return;
  }
  world_.after(verdict.delay, [this, outcome = verdict.outcome, event = std::move(event), answer = std::move(answer)] {
    conclude(outcome, event, answer);
  });
}

void EventGate::conclude(Faults::Outcome outcome, AppleEvent const& event, Answer const& answer) {
  if (hasQuit_) return;
  switch (outcome) {
    case Faults::Outcome::staySilent:
      return;
    case Faults::Outcome::quit:
      hasQuit_ = true;
      world_.quit();
      return;
    case Faults::Outcome::refuse:
      answer(EventError{applescript::errors::kNotPermitted, "Not authorized to send Apple events to Capture One.", {}});
      return;
    case Faults::Outcome::answer:
      break;
  }
  auto reply = handler_(event);
  auto const* value = std::get_if<Value>(&reply);
  bool const isText = value != nullptr && value->as<std::string>() != nullptr;
  if (auto standIn = isText ? standInFor(model_.faults()) : std::nullopt) reply = *std::move(standIn);
  answer(std::move(reply));
}

}  // namespace morla::captureone
