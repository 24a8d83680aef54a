#include "shortcuts/Chord.h"

#include <array>
#include <utility>

#include "platform/NotificationNames.h"

namespace morla::shortcuts {
namespace {

constexpr std::array<std::pair<ModifierMask, platform::ModifierFlags>, 4> kModifiers{{
    {kCommand, platform::kCommandFlag},
    {kShift, platform::kShiftFlag},
    {kOption, platform::kOptionFlag},
    {kControl, platform::kControlFlag},
}};

constexpr char kSeparator = '+';

}  // namespace

ModifierMask modifierMask(platform::ModifierFlags flags) {
  ModifierMask mask = 0;
  for (auto const& [bit, flag] : kModifiers) {
    if (flags.contains(flag)) mask |= bit;
  }
  return mask;
}

platform::ModifierFlags modifierFlags(ModifierMask mask) {
  platform::ModifierFlags flags;
  for (auto const& [bit, flag] : kModifiers) {
    if ((mask & bit) != 0) flags = flags | flag;
  }
  return flags;
}

std::string joinedKeys(KeySet const& keys) {
  std::string joined;
  for (auto const& key : keys) {
    if (&key != &*keys.begin()) joined += kSeparator;
    joined += key;
  }
  return joined;
}

KeySet splitKeys(std::string_view text) {
  KeySet keys;
  if (text.empty()) return keys;
  std::size_t begin = 0;
  for (auto end = text.find(kSeparator); end != std::string_view::npos; end = text.find(kSeparator, begin)) {
    keys.emplace(text.substr(begin, end - begin));
    begin = end + 1;
  }
  keys.emplace(text.substr(begin));
  return keys;
}

StoredChord load(ChordSettings const& settings, platform::UserDefaults const& defaults) {
  return {defaults.text(settings.charactersKey).value_or(""), defaults.integer(settings.modifiersKey).value_or(0)};
}

void store(ChordSettings const& settings, StoredChord const& chord, platform::UserDefaults& defaults) {
  defaults.set(
      {{std::string(settings.charactersKey), chord.characters}, {std::string(settings.modifiersKey), chord.modifiers}});
}

ChordSettings const kMirrorChord{
    "hotkeyChars",
    "hotkeyModifiers",
    notifications::kHotkeyPressed,
    "Impossible de créer l'event tap - vérifiez les permissions d'accessibilité",
};
ChordSettings const kAirdropChord{
    "airdropHotkeyChars",
    "airdropHotkeyModifiers",
    notifications::kAirdropHotkeyPressed,
    "Impossible de créer l'event tap pour Airdrop hotkey",
};
ChordSettings const kCaptureOneFolderChord{
    "captureOneFolderHotkeyChars",
    "captureOneFolderHotkeyModifiers",
    notifications::kCaptureOneFolderHotkeyPressed,
    "Impossible de créer l'event tap pour Capture One folder hotkey",
};

}  // namespace morla::shortcuts
