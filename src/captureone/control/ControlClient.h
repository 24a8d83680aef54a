#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "scriptingbus/BusHandles.h"

namespace morla::captureone {

/// The control tool's side of the bus. Every call blocks; none of them starts the simulator.
class ControlClient {
 public:
  enum class Result { done, refused, timedOut, notRunning };

  struct Outcome {
    Result result = Result::done;
    std::string text;  ///< what was asked for, or why there is none
  };

  /// Nothing when there is no session bus.
  [[nodiscard]] static std::optional<ControlClient> open();

  [[nodiscard]] Outcome get(std::string const& key);
  [[nodiscard]] Outcome set(std::string const& key, std::string const& value);
  [[nodiscard]] Outcome dump();
  [[nodiscard]] Outcome reset();
  /// Returns when the simulator has given up its name.
  [[nodiscard]] Outcome quit();

  /// Returns as soon as the key has exactly that value, be it for a moment only. A simulator that does not run is
  /// waited for as well; when it still does not run at the end, the result is `notRunning`.
  [[nodiscard]] Outcome wait(std::string const& key, std::string const& value, std::chrono::duration<double> time);

 private:
  explicit ControlClient(scriptingbus::BusPointer bus) : bus_(std::move(bus)) {}

  struct Watch;
  struct Reply {
    Outcome outcome;
    scriptingbus::MessagePointer message;  ///< null unless done
  };
  [[nodiscard]] scriptingbus::MessagePointer newCall(char const* method);
  [[nodiscard]] Reply call(scriptingbus::MessagePointer message);
  [[nodiscard]] bool isRunning();

  scriptingbus::BusPointer bus_;
};

}  // namespace morla::captureone
