#pragma once

#include <chrono>
#include <functional>

#include "applescript/AppleEvent.h"
#include "captureone/model/Model.h"

namespace morla::captureone {

/// Stands between the bus and the object model and lets happen what `Faults` decides. Every event that arrives passes
/// here and is counted, once. Main thread.
class EventGate {
 public:
  using Answer = std::function<void(applescript::EventReply)>;
  using Handler = std::function<applescript::EventReply(applescript::AppleEvent const&)>;

  struct World {
    /// Calls `then` after `delay`, never before `after` returns; a zero delay is not asked for.
    std::function<void(std::chrono::duration<double> delay, std::function<void()> then)> after;
    /// Ends the program without answering anything more.
    std::function<void()> quit;
  };

  /// The model must outlive the gate, the gate what `after` was given.
  EventGate(Model& model, Handler handler, World world);

  /// Delayed events wait side by side, as long as was asked for when each arrived; the model is read when an event's
  /// wait is over.
  void handle(applescript::AppleEvent event, Answer answer);

 private:
  void conclude(Faults::Outcome outcome, applescript::AppleEvent const& event, Answer const& answer);

  Model& model_;
  Handler handler_;
  World world_;
  bool hasQuit_ = false;  ///< the program may take a moment to end; nobody is answered any more
};

}  // namespace morla::captureone
