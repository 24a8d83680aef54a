#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/Lifetime.h"
#include "captureone/model/Model.h"

namespace morla::captureone {

/// Works the processing queue off, one file at a time: waits as long as the queue says, has the file written, tells the
/// queue what became of it. A wait ends when its file is not wanted any more, and begins anew when the queue says
/// another time. Main thread.
class Processor {
 public:
  using Written = std::function<void(std::optional<std::string> failure)>;

  struct World {
    /// Calls `then` after `delay`; a zero delay is not asked for.
    std::function<void(std::chrono::duration<double> delay, std::function<void()> then)> after;
    /// Writes the file and calls `written` once, on the main thread, before or after it returns.
    std::function<void(OutputJob const& job, Written written)> write;
  };

  /// The model must outlive the processor.
  Processor(Model& model, World world);

 private:
  enum class State { idle, waiting, writing };

  /// Begins what can be begun.
  void proceed();
  void begin(OutputJob const& job);
  void endWait();
  void write(std::string const& id);
  [[nodiscard]] bool isReady(OutputJob const& job) const;

  Model& model_;
  World world_;
  State state_ = State::idle;
  bool isProceeding_ = false;
  std::uint64_t wait_ = 0;  ///< a timer of another wait comes too late
  std::string waitsFor_;    ///< id of a job
  ProcessingQueue::Seconds waits_{0};
  Subscription changes_;
  Lifetime life_;
};

}  // namespace morla::captureone
