#include "platform/linux/input/Keymap.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <string_view>

#include "base/unicode/Unicode.h"
#include "platform/linux/input/KeyCodes.h"
#include "platform/linux/input/XcbHandle.h"

namespace morla::linux {
namespace {

template <auto Function>
struct Calling {
  template <typename T>
  void operator()(T* object) const {
    Function(object);
  }
};
using XkbContext = std::unique_ptr<xkb_context, Calling<xkb_context_unref>>;
using XkbKeymap = std::unique_ptr<xkb_keymap, Calling<xkb_keymap_unref>>;
using XkbState = std::unique_ptr<xkb_state, Calling<xkb_state_unref>>;

constexpr unsigned kModifiers = 8;  ///< Shift, Lock, Control, Mod1 to Mod5
constexpr std::uint16_t kModifierBits = 0xFF;

constexpr unsigned groupOf(std::uint16_t state) {
  return (state >> 13U) & 3U;
}

/// What is on the key when nothing else is pressed, in the first layout.
xkb_keysym_t firstSymbol(xkb_keymap* keymap, xcb_keycode_t key) {
  xkb_keysym_t const* symbols = nullptr;
  return xkb_keymap_key_get_syms_by_level(keymap, key, 0, 0, &symbols) == 1 ? symbols[0]
                                                                            : xkb_keysym_t{XKB_KEY_NoSymbol};
}

std::string textOf(xkb_state* state, xcb_keycode_t key) {
  auto const size = xkb_state_key_get_utf8(state, key, nullptr, 0);
  if (size <= 0) return {};
  std::string text(static_cast<std::size_t>(size) + 1, '\0');
  xkb_state_key_get_utf8(state, key, text.data(), text.size());
  text.pop_back();
  return text;
}

}  // namespace

std::shared_ptr<Keymap const> Keymap::load(xcb_connection_t* connection) {
  if (xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                  XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) == 0) {
    return nullptr;
  }
  XkbContext const context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
  if (context == nullptr) return nullptr;
  auto const device = xkb_x11_get_core_keyboard_device_id(connection);
  XkbKeymap const keymap(
      device < 0 ? nullptr
                 : xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (keymap == nullptr) return nullptr;
  XkbState const state(xkb_state_new(keymap.get()));
  std::shared_ptr<Keymap> result(new Keymap);
  if (state == nullptr || !result->readModifiers(connection, keymap.get())) return nullptr;
  result->readKeys(keymap.get(), state.get());
  return result;
}

bool Keymap::readModifiers(xcb_connection_t* connection, xkb_keymap* keymap) {
  XcbOwned<xcb_get_modifier_mapping_reply_t> const reply(
      xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
  if (reply == nullptr) return false;
  auto const* const keys = xcb_get_modifier_mapping_keycodes(reply.get());
  unsigned const perModifier = reply->keycodes_per_modifier;
  for (unsigned i = 0; i < kModifiers * perModifier; ++i) {
    if (keys[i] == 0) continue;
    auto const bit = static_cast<std::uint8_t>(1U << (i / perModifier));
    modifierOfKey_[keys[i]] = static_cast<std::uint8_t>(modifierOfKey_[keys[i]] | bit);
    switch (firstSymbol(keymap, keys[i])) {
      case XKB_KEY_Super_L:
      case XKB_KEY_Super_R:
        command_ = static_cast<std::uint8_t>(command_ | bit);
        break;
      case XKB_KEY_Alt_L:
      case XKB_KEY_Alt_R:
        option_ = static_cast<std::uint8_t>(option_ | bit);
        break;
      case XKB_KEY_ISO_Level3_Shift:
      case XKB_KEY_ISO_Level5_Shift:
      case XKB_KEY_Mode_switch:
        text_ = static_cast<std::uint8_t>(text_ | bit);
        break;
      case XKB_KEY_Num_Lock:
        numLock_ = static_cast<std::uint8_t>(numLock_ | bit);
        break;
      default:
        break;
    }
  }
  // Where Alt is the same modifier, nothing tells them apart.
  text_ = static_cast<std::uint8_t>(text_ & ~unsigned{option_});
  return true;
}

void Keymap::readKeys(xkb_keymap* keymap, xkb_state* state) {
  macCodes_.fill(kNoMacKey);
  for (auto key = xkb_keymap_min_keycode(keymap); key <= xkb_keymap_max_keycode(keymap) && key < kKeys; ++key) {
    char const* const name = xkb_keymap_key_get_name(keymap, key);
    std::string_view const keyName(name == nullptr ? "" : name);
    macCodes_[key] = macKeyCode(keyName);
    // A Mac's keypad types digits and nothing else.
    bool const isKeypad = keyName.starts_with("KP");
    for (unsigned group = 0; group < kGroups; ++group) {
      for (auto const shift : {plain, shifted}) {
        auto& text = characters_[key][group][shift];
        text = macCharacters(macCodes_[key], shift == shifted);
        if (!text.empty()) continue;
        xkb_mod_mask_t const shiftBit = shift == shifted ? XCB_MOD_MASK_SHIFT : 0;
        xkb_state_update_mask(state, isKeypad ? 0 : shiftBit, 0, isKeypad ? numLock_ : 0, 0, 0, group);
        text = textOf(state, static_cast<xcb_keycode_t>(key));
      }
    }
  }
}

platform::ModifierFlags Keymap::flags(std::uint16_t state) const {
  platform::ModifierFlags flags;
  if ((state & XCB_MOD_MASK_LOCK) != 0) flags = flags | platform::kCapsLockFlag;
  if ((state & XCB_MOD_MASK_SHIFT) != 0) flags = flags | platform::kShiftFlag;
  if ((state & XCB_MOD_MASK_CONTROL) != 0) flags = flags | platform::kControlFlag;
  if ((state & (option_ | text_)) != 0) flags = flags | platform::kOptionFlag;
  if ((state & command_) != 0) flags = flags | platform::kCommandFlag;
  return flags;
}

platform::KeyEvent Keymap::event(xcb_keycode_t key, std::uint16_t state, platform::KeyEventType type) const {
  platform::KeyEvent event{type, macCodes_[key], {}, {}, false};
  auto const modifier = modifierOfKey_[key];
  if (modifier == 0) {
    event.modifierFlags = flags(state);
    // A release keeps them: the key may have been pressed before AltGr.
    if (type == platform::KeyEventType::down && (state & text_) != 0) return event;
    event.charactersIgnoringModifiers = characters(key, groupOf(state), (state & XCB_MOD_MASK_SHIFT) != 0);
    return event;
  }
  // The state is that before the event.
  unsigned const after = type == platform::KeyEventType::up ? state & ~unsigned{modifier} : state | unsigned{modifier};
  event.type = platform::KeyEventType::flagsChanged;
  event.modifierFlags = flags(static_cast<std::uint16_t>(after));
  return event;
}

std::vector<Keymap::Grab> Keymap::grabs(platform::WantedKeys const& wanted, unsigned group) const {
  constexpr auto kCounting =
      platform::kShiftFlag | platform::kControlFlag | platform::kOptionFlag | platform::kCommandFlag;
  std::vector<Grab> grabs;
  for (std::size_t key = 0; key < kKeys; ++key) {
    auto const& text =
        characters(static_cast<xcb_keycode_t>(key), group, wanted.modifiers.contains(platform::kShiftFlag));
    if (text.empty() || isModifier(static_cast<xcb_keycode_t>(key))) continue;
    if (!wanted.characters.contains(unicode::uppercased(text))) continue;
    for (std::uint16_t state = 0; state <= kModifierBits; ++state) {
      if ((state & text_) != 0) continue;
      if ((flags(state).bits & kCounting.bits) != (wanted.modifiers.bits & kCounting.bits)) continue;
      grabs.push_back({static_cast<xcb_keycode_t>(key), state});
    }
  }
  return grabs;
}

}  // namespace morla::linux
