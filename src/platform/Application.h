#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morla::platform {

enum class ActivationPolicy {
  regular = 0,
  accessory = 1,  ///< no Dock icon, no menu bar of its own
};

/// What became of an action that was asked for from outside the process.
enum class ActionOutcome { done, unknown, unavailable };

/// This process as the desktop sees it. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  virtual void setActivationPolicy(ActivationPolicy policy) = 0;

  /// Runs the event loop until `terminate`; returns the process's exit status, unless the system itself ends the
  /// process then, with status 0.
  virtual int run() = 0;

  /// Asks the application to end; `run` ends soon afterwards.
  virtual void terminate() = 0;

  /// `handler` decides on actions that the user asks for from outside (desktop shortcuts, the command line), by name.
  virtual void onActionRequest(std::function<ActionOutcome(std::string_view action)> handler) = 0;
};

/// The bundle that this program was started from.
class OwnBundle {
 public:
  virtual ~OwnBundle() = default;
  [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;
  [[nodiscard]] virtual std::string shortVersion() const = 0;
};

}  // namespace morla::platform
