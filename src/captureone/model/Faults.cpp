#include "captureone/model/Faults.h"

#include <utility>

namespace morla::captureone {

Faults::Verdict Faults::nextEvent() {
  ++events_;
  // Both count every event, whatever becomes of it.
  bool const quits = quit_.strikes();
  bool const refuses = refuse_.strikes();
  Verdict verdict{Outcome::answer, delay_};
  if (quits) {
    verdict.outcome = Outcome::quit;
  } else if (refuses) {
    verdict.outcome = Outcome::refuse;
  } else if (silence_ == Silence::on) {
    verdict.outcome = Outcome::staySilent;
  }
  changes_.announceEvent();
  return verdict;
}

bool Faults::setDelay(std::chrono::duration<double> delay) {
  if (!(delay.count() >= 0 && delay <= kLongestDelay)) return false;
  if (delay == delay_) return true;
  delay_ = delay;
  changes_.announce();
  return true;
}

void Faults::setSilence(Silence silence) {
  if (silence == silence_) return;
  silence_ = silence;
  changes_.announce();
}

bool Faults::set(Countdown& countdown, std::int64_t event) {
  if (event < 0) return false;
  countdown = {event, event};
  changes_.announce();
  return true;
}

bool Faults::setQuitAtEvent(std::int64_t event) {
  return set(quit_, event);
}

bool Faults::setRefuseAtEvent(std::int64_t event) {
  return set(refuse_, event);
}

void Faults::setStandIn(StandIn standIn) {
  if (standIn == standIn_) return;
  standIn_ = standIn;
  changes_.announce();
}

void Faults::setReply(std::string reply) {
  if (reply == reply_) return;
  reply_ = std::move(reply);
  changes_.announce();
}

void Faults::reset() {
  events_ = 0;
  delay_ = {};
  silence_ = Silence::off;
  quit_ = {};
  refuse_ = {};
  standIn_ = StandIn::text;
  reply_.clear();
  changes_.announce();
}

}  // namespace morla::captureone
