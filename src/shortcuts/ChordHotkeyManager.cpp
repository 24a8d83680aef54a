#include "shortcuts/ChordHotkeyManager.h"

#include <utility>

#include "base/Log.h"
#include "base/unicode/Unicode.h"

namespace morla::shortcuts {

void ChordHotkeyManager::registerHotkey() {
  unregisterHotkey();
  auto const stored = load(settings_, roles_.defaults);
  matcher_.setModifiers(stored.modifiers);
  if (stored.characters.empty()) return;
  KeySet characters;
  for (auto const& key : splitKeys(stored.characters)) characters.insert(unicode::uppercased(key));
  matcher_.setCharacters(characters);
  chordWasReleased();
  eventTap_ = roles_.taps.makeTap(*this, {std::move(characters), modifierFlags(stored.modifiers)});
  if (eventTap_ == nullptr) logVerbatim(settings_.noTapMessage);
}

void ChordHotkeyManager::unregisterHotkey() {
  eventTap_.reset();
  matcher_.reset();
  chordWasReleased();
}

platform::TapDecision ChordHotkeyManager::handle(platform::KeyEvent const& event) {
  auto const outcome = matcher_.handle(event);
  if (outcome.isReleased) chordWasReleased();
  // On a turn of its own: the keyboard waits for this call, and must not wait for what the chord does.
  if (outcome.isFired) {
    roles_.loop.post(life_.weak([this] { roles_.notifications.post(settings_.pressed); }));
  }
  return outcome.decision;
}

}  // namespace morla::shortcuts
