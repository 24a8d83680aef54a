#include "captureone/scripting/EventGate.h"

#include <string>
#include <utility>

namespace morla::captureone {

using applescript::AppleEvent;
using applescript::EventError;
using applescript::Value;

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
  if (isText && !model_.faults().reply().empty()) reply = Value(model_.faults().reply());
  answer(std::move(reply));
}

}  // namespace morla::captureone
