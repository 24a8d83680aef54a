#pragma once

#include "platform/KeyEvents.h"
#include "shortcuts/Chord.h"

namespace morla::shortcuts {

/// Recognises one chord in a stream of key events. It fires when the last missing key goes down under exactly the
/// chord's modifiers, in whatever order; every event of the chord's keys under these modifiers is swallowed, all else
/// passes. A change of any modifier starts the chord anew.
class ChordMatcher {
 public:
  struct Outcome {
    platform::TapDecision decision = platform::TapDecision::pass;
    bool isFired = false;
    bool isReleased = false;  ///< none of the chord's keys counts as held any more; it begins anew
    friend bool operator==(Outcome const&, Outcome const&) = default;
  };

  /// From now on: these upper-case characters under these modifiers, none of them held. Without characters nothing
  /// ever fires.
  void setCharacters(KeySet characters);
  void setModifiers(ModifierMask modifiers) { savedModifiers_ = modifiers; }
  /// Counts every key as released.
  void reset() { pressedChars_.clear(); }

  [[nodiscard]] Outcome handle(platform::KeyEvent const& event);

  [[nodiscard]] KeySet const& savedChars() const { return savedChars_; }
  [[nodiscard]] ModifierMask savedModifiers() const { return savedModifiers_; }
  [[nodiscard]] KeySet const& pressedChars() const { return pressedChars_; }

 private:
  KeySet pressedChars_;
  KeySet savedChars_;
  ModifierMask savedModifiers_ = 0;
};

}  // namespace morla::shortcuts
