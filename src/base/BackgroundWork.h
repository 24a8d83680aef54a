#pragma once

#include <functional>

namespace morla {

enum class QualityOfService {
  userInitiated,  ///< a person waits for it
  utility,        ///< nobody does
};

/// The one way off the main thread.
class BackgroundWork {
 public:
  virtual ~BackgroundWork() = default;

  /// Main thread. Runs `work` on another thread, at once: at least 64 run side by side, so that jobs which wait for a
  /// silent application do not hold up the others. The job comes back through MainLoop::post.
  virtual void run(QualityOfService quality, std::function<void()> work) = 0;
};

}  // namespace morla
