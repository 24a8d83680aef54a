#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/Published.h"
#include "platform/Environment.h"
#include "shortcuts/Chord.h"
#include "shortcuts/ChordHotkeyManager.h"

namespace morla::shortcuts {

/// Lets the user define one of the chords by pressing it: the largest set of keys held at once is taken when all have
/// been released, stored, and watched for. Escape alone cancels, Delete alone clears. Main thread.
class ShortcutRecorder {
 public:
  struct Roles {
    MainLoop& loop;
    platform::KeyMonitors& monitors;
    platform::UserDefaults& defaults;
    ChordHotkeyManager& hotkeys;  ///< watches for the chord that is recorded here
  };

  // What the view shows; while keys are typed it changes on a later turn of the loop.
  [[nodiscard]] Published<bool> const& isRecording() const { return isRecording_; }
  [[nodiscard]] Published<KeySet> const& currentChars() const { return currentChars_; }
  [[nodiscard]] Published<ModifierMask> const& currentModifiers() const { return currentModifiers_; }
  /// To be shown under the button; empty when there is nothing to say.
  [[nodiscard]] Published<std::string> const& errorMessage() const { return errorMessage_; }

  /// Begins anew; the stored chord is not watched for meanwhile.
  void startRecording();
  /// Also when nothing is recorded: a chord that is there is stored and watched for.
  void stopRecording();
  /// Empties the chord and ends the recording; what is stored stays until `saveToDefaults`.
  void clearShortcut();
  void loadFromDefaults();
  void saveToDefaults();

  /// The chord, as the button's title: "⌘⇧A+B".
  [[nodiscard]] std::string displayText() const;

 protected:
  struct TraceNames {
    std::string_view isRecording;
    std::string_view currentChars;
    std::string_view currentModifiers;
    std::string_view errorMessage;
  };
  /// `settings` and what `names` refers to outlive this object.
  ShortcutRecorder(Roles roles, ChordSettings const& settings, TraceNames const& names);

 private:
  void handle(platform::KeyEvent const& event);
  void handleKeyDown(platform::KeyEvent const& event);
  void handleKeyUp(platform::KeyEvent const& event);
  void takeChord();
  [[nodiscard]] StoredChord chord() const;
  /// `work` on a later turn, while this object lives.
  template <typename Work>
  void later(Work work) {
    roles_.loop.post(life_.weak(std::move(work)));
  }

  Roles roles_;
  ChordSettings const& settings_;

  Published<bool> isRecording_;
  Published<KeySet> currentChars_;
  Published<ModifierMask> currentModifiers_;
  Published<std::string> errorMessage_;

  Subscription localMonitorDown_;
  Subscription localMonitorUp_;
  Subscription globalMonitorDown_;
  Subscription globalMonitorUp_;
  KeySet recordingChars_;
  ModifierMask recordingModifiers_ = 0;
  KeySet maxCharsReached_;

  Lifetime life_;
};

/// What the recorders have in common as shared objects. `Manager` watches for the chord.
template <typename Recorder, typename Manager>
class SharedShortcutRecorder : public ShortcutRecorder {
 public:
  [[nodiscard]] static Recorder& shared() { return platform::Environment::active().shared<Recorder>(); }
  [[nodiscard]] static std::unique_ptr<Recorder> make(platform::Environment& environment) {
    auto& p = environment.platform();
    return std::make_unique<Recorder>(Roles{p.mainLoop, p.keyMonitors, p.defaults, environment.shared<Manager>()});
  }

 protected:
  using ShortcutRecorder::ShortcutRecorder;
};

class ShortcutRecorderManager final : public SharedShortcutRecorder<ShortcutRecorderManager, HotkeyManager> {
 public:
  explicit ShortcutRecorderManager(Roles roles)
      : SharedShortcutRecorder(roles, kMirrorChord,
                               {"ShortcutRecorderManager.isRecording", "ShortcutRecorderManager.currentChars",
                                "ShortcutRecorderManager.currentModifiers", "ShortcutRecorderManager.errorMessage"}) {}
};

class AirdropShortcutRecorderManager final
    : public SharedShortcutRecorder<AirdropShortcutRecorderManager, AirdropHotkeyManager> {
 public:
  explicit AirdropShortcutRecorderManager(Roles roles)
      : SharedShortcutRecorder(
            roles, kAirdropChord,
            {"AirdropShortcutRecorderManager.isRecording", "AirdropShortcutRecorderManager.currentChars",
             "AirdropShortcutRecorderManager.currentModifiers", "AirdropShortcutRecorderManager.errorMessage"}) {}
};

class CaptureOneFolderShortcutRecorderManager final
    : public SharedShortcutRecorder<CaptureOneFolderShortcutRecorderManager, CaptureOneFolderHotkeyManager> {
 public:
  explicit CaptureOneFolderShortcutRecorderManager(Roles roles)
      : SharedShortcutRecorder(roles, kCaptureOneFolderChord,
                               {"CaptureOneFolderShortcutRecorderManager.isRecording",
                                "CaptureOneFolderShortcutRecorderManager.currentChars",
                                "CaptureOneFolderShortcutRecorderManager.currentModifiers",
                                "CaptureOneFolderShortcutRecorderManager.errorMessage"}) {}
};

}  // namespace morla::shortcuts
