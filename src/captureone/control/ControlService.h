#pragma once

#include <functional>
#include <memory>
#include <string>

#include "captureone/control/Controls.h"

struct sd_bus;

namespace morla::captureone {

/// Serves `Controls` on a connection of the session bus that somebody else waits on. Main thread.
class ControlService {
 public:
  struct Hooks {
    std::function<void()> settle;  ///< makes the window show what the model is now; before `Set` and `Reset` return
    std::function<void()> quit;    ///< shall take effect later, so that the caller gets its reply
  };

  struct Opened {
    std::unique_ptr<ControlService> service;  ///< null: `failure` says why
    std::string failure;
  };
  /// The connection and the controls must outlive the service.
  [[nodiscard]] static Opened open(sd_bus* bus, Controls& controls, Hooks hooks);

  virtual ~ControlService() = default;
};

}  // namespace morla::captureone
