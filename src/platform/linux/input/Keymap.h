#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/KeyEvents.h"

struct xkb_keymap;
struct xkb_state;

namespace morla::linux {

/// What the keys of the keyboard mean, as it was when it was asked for: which characters they type, which key of a Mac
/// they are, which modifier stands for which of a Mac. Never changes, so any thread may read it.
class Keymap {
 public:
  /// Asks the server several times. None when the server has no XKB or is gone.
  [[nodiscard]] static std::shared_ptr<Keymap const> load(xcb_connection_t* connection);

  /// `state`: as in a core key event, the modifiers before the event and the layout (group) in bits 13 and 14. What is
  /// pressed with AltGr is text and nothing else: such a press has no characters, so that it is of no chord.
  [[nodiscard]] platform::KeyEvent event(xcb_keycode_t key, std::uint16_t state, platform::KeyEventType type) const;

  [[nodiscard]] bool isModifier(xcb_keycode_t key) const { return modifierOfKey_[key] != 0; }
  /// Of the modifiers in `state`. Super is Command. Alt is Option, and so is the key for the third level (AltGr), as
  /// the right Option key of a Mac; Num Lock is nothing.
  [[nodiscard]] platform::ModifierFlags flags(std::uint16_t state) const;

  struct Grab {
    xcb_keycode_t key;
    std::uint16_t modifiers;
    friend auto operator<=>(Grab const&, Grab const&) = default;
  };
  /// Each key that types one of the upper-case characters in layout `group`, with each set of modifiers under which it
  /// is wanted: also those that are none on a Mac, but not AltGr.
  [[nodiscard]] std::vector<Grab> grabs(platform::WantedKeys const& wanted, unsigned group) const;

 private:
  static constexpr std::size_t kKeys = 256;
  static constexpr std::size_t kGroups = 4;
  enum Shift : std::uint8_t { plain, shifted, shifts };

  Keymap() = default;
  bool readModifiers(xcb_connection_t* connection, xkb_keymap* keymap);
  void readKeys(xkb_keymap* keymap, xkb_state* state);
  [[nodiscard]] std::string const& characters(xcb_keycode_t key, unsigned group, bool withShift) const {
    return characters_[key][group % kGroups][withShift ? shifted : plain];
  }

  std::array<std::uint16_t, kKeys> macCodes_{};
  std::array<std::array<std::array<std::string, shifts>, kGroups>, kKeys> characters_;
  std::array<std::uint8_t, kKeys> modifierOfKey_{};  ///< the bits in an event's state
  std::uint8_t command_ = 0;
  std::uint8_t option_ = 0;
  std::uint8_t text_ = 0;  ///< AltGr and its like, which type what stands third on a key; they count as Option too
  std::uint8_t numLock_ = 0;
};

}  // namespace morla::linux
