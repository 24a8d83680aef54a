#pragma once

#include <memory>

#include "base/NotificationCenter.h"
#include "platform/Menu.h"
#include "platform/UserDefaults.h"

namespace morla::platform {
class Environment;
}

namespace morla::mirror {

/// The two switches of the screen mirror and the camera check. Nothing is kept here: the user defaults are the state,
/// so that every reader sees the same. Main thread.
class FloatingButtonState {
 public:
  FloatingButtonState(platform::UserDefaults& defaults, NotificationCenter& notifications)
      : defaults_(defaults), notifications_(notifications) {}

  [[nodiscard]] static FloatingButtonState& shared();
  [[nodiscard]] static std::unique_ptr<FloatingButtonState> make(platform::Environment& environment);

  /// Stores the defaults of a first start (window mode on, check mode off); never overwrites anything.
  void initializeDefaults();

  /// Window mode: the floating button and the mirror panel are in use.
  [[nodiscard]] bool windowModeEnabled() const;
  /// Announces every write, also of an equal value.
  void setWindowModeEnabled(bool value);
  [[nodiscard]] bool checkModeEnabled() const;
  void setCheckModeEnabled(bool value);

  void toggleWindowMode();
  void toggleCheckMode();

  /// Items that toggling ticks while they exist; whoever shows the menu owns them.
  std::weak_ptr<platform::MenuItem> windowMenuItem;
  std::weak_ptr<platform::MenuItem> checkMenuItem;

 private:
  platform::UserDefaults& defaults_;
  NotificationCenter& notifications_;
};

}  // namespace morla::mirror
