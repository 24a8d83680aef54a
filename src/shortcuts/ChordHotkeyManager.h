#pragma once

#include <memory>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/NotificationCenter.h"
#include "platform/Environment.h"
#include "shortcuts/Chord.h"
#include "shortcuts/ChordMatcher.h"

namespace morla::shortcuts {

/// Watches the keyboard of the whole session for one stored chord and posts its notification, on a later turn of the
/// main loop. What the chord does is up to whoever observes the notification. Main thread.
class ChordHotkeyManager : private platform::EventTap::Callback {
 public:
  struct Roles {
    MainLoop& loop;
    platform::EventTaps& taps;
    platform::UserDefaults& defaults;
    NotificationCenter& notifications;
  };

  ~ChordHotkeyManager() override = default;

  /// Reads the stored chord and watches for it from now on. Without one nothing is watched. Without a tap (the user has
  /// not allowed it) a line is logged, and nothing is watched until the next call.
  void registerHotkey();
  void unregisterHotkey();

  [[nodiscard]] bool isWatching() const { return eventTap_ != nullptr; }
  [[nodiscard]] ChordMatcher const& matcher() const { return matcher_; }

 protected:
  /// `settings` outlives this object.
  ChordHotkeyManager(Roles roles, ChordSettings const& settings) : roles_(roles), settings_(settings) {}

 private:
  platform::TapDecision handle(platform::KeyEvent const& event) final;
  void tapWasDisabled(platform::EventTap& tap) final { tap.enable(); }
  /// None of the chord's keys is held any more.
  virtual void chordWasReleased() {}

  Roles roles_;
  ChordSettings const& settings_;
  ChordMatcher matcher_;
  std::unique_ptr<platform::EventTap> eventTap_;
  Lifetime life_;
};

/// What the managers have in common as shared objects.
template <typename Manager>
class SharedHotkeyManager : public ChordHotkeyManager {
 public:
  [[nodiscard]] static Manager& shared() { return platform::Environment::active().shared<Manager>(); }
  [[nodiscard]] static std::unique_ptr<Manager> make(platform::Environment& environment) {
    auto& p = environment.platform();
    return std::make_unique<Manager>(Roles{p.mainLoop, p.eventTaps, p.defaults, environment.notifications()});
  }

 protected:
  using ChordHotkeyManager::ChordHotkeyManager;
};

/// The chord that shows and hides the mirror window.
class HotkeyManager final : public SharedHotkeyManager<HotkeyManager> {
 public:
  explicit HotkeyManager(Roles roles) : SharedHotkeyManager(roles, kMirrorChord) {}

 private:
  void chordWasReleased() override { triggered_ = false; }

  /// Only ever reset: a chord that is held does not fire again, because auto-repeats do not count.
  bool triggered_ = false;
};

/// The chord that exports the selected images to AirDrop.
class AirdropHotkeyManager final : public SharedHotkeyManager<AirdropHotkeyManager> {
 public:
  explicit AirdropHotkeyManager(Roles roles) : SharedHotkeyManager(roles, kAirdropChord) {}
};

/// The chord that creates a capture folder.
class CaptureOneFolderHotkeyManager final : public SharedHotkeyManager<CaptureOneFolderHotkeyManager> {
 public:
  explicit CaptureOneFolderHotkeyManager(Roles roles) : SharedHotkeyManager(roles, kCaptureOneFolderChord) {}
};

}  // namespace morla::shortcuts
