#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "base/NotificationCenter.h"
#include "platform/KeyEvents.h"
#include "platform/UserDefaults.h"

/// What a chord is: up to three keys with an exact set of modifiers, and how it is stored.
namespace morla::shortcuts {

/// A set of the four modifiers that count, as it is stored.
using ModifierMask = std::int64_t;
inline constexpr ModifierMask kCommand = 0x100;
inline constexpr ModifierMask kShift = 0x200;
inline constexpr ModifierMask kOption = 0x800;
inline constexpr ModifierMask kControl = 0x1000;

/// Caps Lock and every other flag are left out.
[[nodiscard]] ModifierMask modifierMask(platform::ModifierFlags flags);
/// The way back; bits that are no modifier are left out.
[[nodiscard]] platform::ModifierFlags modifierFlags(ModifierMask mask);

/// Characters, or names of keys that type none.
using KeySet = std::set<std::string>;

/// The keys in ascending order, joined by "+"; empty when there are none.
[[nodiscard]] std::string joinedKeys(KeySet const& keys);
/// The pieces between the "+", also empty ones: a key "+" is not what comes back. No keys in an empty text.
[[nodiscard]] KeySet splitKeys(std::string_view text);

/// One of the program's chords: where it is stored, and what is to be said about it.
struct ChordSettings {
  std::string_view charactersKey;  ///< text in the user defaults, ""
  std::string_view modifiersKey;   ///< integer in the user defaults, 0
  NotificationName pressed;
  std::string_view noTapMessage;  ///< for the log, when no event tap can be made
};

struct StoredChord {
  std::string characters;
  ModifierMask modifiers = 0;
};
/// What is absent is empty or 0.
[[nodiscard]] StoredChord load(ChordSettings const& settings, platform::UserDefaults const& defaults);
void store(ChordSettings const& settings, StoredChord const& chord, platform::UserDefaults& defaults);

extern ChordSettings const kMirrorChord;
extern ChordSettings const kAirdropChord;
extern ChordSettings const kCaptureOneFolderChord;

}  // namespace morla::shortcuts
