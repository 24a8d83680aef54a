#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "captureone/model/Changes.h"

namespace morla::captureone {

enum class Silence { off, on };

/// What stands in for every reply that is text.
enum class StandIn {
  text,  ///< a raw text; where that is empty, replies stay what they are
  integer,
  missing,  ///< `missing value`, as for a property that a camera does not have
  nothing,  ///< a reply without a value
};

/// What shall go wrong when a script speaks to the application, and how many events have come.
class Faults {
 public:
  enum class Outcome {
    answer,
    staySilent,
    refuse,  ///< as if the person had withdrawn the permission
    quit,    ///< without an answer
  };
  struct Verdict {
    Outcome outcome = Outcome::answer;
    std::chrono::duration<double> delay{0};  ///< to be waited before anything is done
    friend bool operator==(Verdict const&, Verdict const&) = default;
  };

  /// Longer than any timeout of an event; a bound, so that a clock can be set to it.
  static constexpr std::chrono::duration<double> kLongestDelay{86'400};

  explicit Faults(Changes& changes) : changes_(changes) {}

  /// Counts one event and decides its fate.
  [[nodiscard]] Verdict nextEvent();

  [[nodiscard]] std::int64_t events() const { return events_; }
  [[nodiscard]] std::chrono::duration<double> delay() const { return delay_; }
  [[nodiscard]] Silence silence() const { return silence_; }
  [[nodiscard]] std::int64_t quitAtEvent() const { return quit_.asked; }
  [[nodiscard]] std::int64_t refuseAtEvent() const { return refuse_.asked; }
  [[nodiscard]] StandIn standIn() const { return standIn_; }
  /// For `StandIn::text`.
  [[nodiscard]] std::string const& reply() const { return reply_; }

  /// From 0 to `kLongestDelay`; anything else is false and changes nothing.
  bool setDelay(std::chrono::duration<double> delay);
  void setSilence(Silence silence);
  /// Counted from here on: 1 is the next event, 0 is never. Setting the same number again starts the count again.
  /// A number that has been reached stays as it was asked for and does nothing more. False when negative.
  bool setQuitAtEvent(std::int64_t event);
  bool setRefuseAtEvent(std::int64_t event);
  void setStandIn(StandIn standIn);
  void setReply(std::string reply);
  void reset();

 private:
  struct Countdown {
    std::int64_t asked = 0;
    std::int64_t left = 0;
    [[nodiscard]] bool strikes() { return left > 0 && --left == 0; }
  };
  bool set(Countdown& countdown, std::int64_t event);

  Changes& changes_;
  std::int64_t events_ = 0;
  std::chrono::duration<double> delay_{0};
  Silence silence_ = Silence::off;
  Countdown quit_;
  Countdown refuse_;
  StandIn standIn_ = StandIn::text;
  std::string reply_;
};

}  // namespace morla::captureone
