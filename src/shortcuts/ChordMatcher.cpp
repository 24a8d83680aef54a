#include "shortcuts/ChordMatcher.h"

#include <utility>

#include "base/unicode/Unicode.h"

namespace morla::shortcuts {

using platform::KeyEventType;
using platform::TapDecision;

void ChordMatcher::setCharacters(KeySet characters) {
  savedChars_ = std::move(characters);
  reset();
}

ChordMatcher::Outcome ChordMatcher::handle(platform::KeyEvent const& event) {
  if (event.type == KeyEventType::flagsChanged) {
    reset();
    return {.isReleased = true};
  }
  auto const character = unicode::uppercased(event.charactersIgnoringModifiers);
  if (character.empty()) return {};
  if (modifierMask(event.modifierFlags) != savedModifiers_) {
    reset();
    return {};
  }
  if (!savedChars_.contains(character)) return {};
  if (event.type == KeyEventType::up) {
    pressedChars_.erase(character);
    return {.decision = TapDecision::swallow, .isReleased = pressedChars_.empty()};
  }
  if (event.isAutoRepeat) return {.decision = TapDecision::swallow};
  pressedChars_.insert(character);
  return {.decision = TapDecision::swallow, .isFired = pressedChars_ == savedChars_};
}

}  // namespace morla::shortcuts
