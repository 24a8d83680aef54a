#include "platform/linux/input/HeldKeys.h"

#include <xcb/xinput.h>

#include <cstring>

#include "platform/linux/input/XcbHandle.h"

namespace morla::linux {
namespace {

constexpr std::uint16_t kMajor = 2;
constexpr std::uint16_t kMinor = 2;  // from 2.1 on presses are announced also while another client has the keyboard

}  // namespace

std::optional<HeldKeys> HeldKeys::start(xcb_connection_t* connection) {
  auto const* const extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  XcbOwned<xcb_input_xi_query_version_reply_t> const version(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, kMajor, kMinor), nullptr));
  if (version == nullptr || version->major_version < kMajor || version->minor_version < kMinor) return std::nullopt;
  return HeldKeys(connection, extension->major_opcode);
}

void HeldKeys::refresh(Keymap const& keymap) {
  auto const cookie = xcb_query_keymap(connection_);
  asked_ = static_cast<std::uint16_t>(cookie.sequence);
  XcbOwned<xcb_query_keymap_reply_t> const reply(xcb_query_keymap_reply(connection_, cookie, nullptr));
  keys_.clear();
  for (unsigned key = 0; reply != nullptr && key < 8 * sizeof reply->keys; ++key) {
    auto const code = static_cast<xcb_keycode_t>(key);
    bool const isDown = ((reply->keys[key / 8] >> (key % 8)) & 1) != 0;
    if (isDown && !keymap.isModifier(code)) keys_.insert(code);
  }
  update();
}

void HeldKeys::add(std::set<xcb_keycode_t> const& keys) {
  if (keys.empty()) return;
  keys_.insert(keys.begin(), keys.end());
  update();
}

void HeldKeys::update() {
  bool const isWanted = !keys_.empty();
  if (isWanted == isTold_) return;
  isTold_ = isWanted;
  struct {
    xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t mask = 0;
  } selection;
  if (isWanted) selection.mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
  xcb_input_xi_select_events(connection_, rootOf(connection_), 1, &selection.head);
  xcb_flush(connection_);
}

void HeldKeys::note(xcb_generic_event_t const& event) {
  if ((event.response_type & 0x7FU) != XCB_GE_GENERIC) return;
  xcb_input_raw_key_press_event_t press;
  std::memcpy(&press, &event, sizeof press);
  if (press.extension != opcode_ || press.event_type != XCB_INPUT_RAW_KEY_PRESS) return;
  // It came up in between, and the core event that follows is a press.
  keys_.erase(static_cast<xcb_keycode_t>(press.detail));
  update();
}

bool HeldKeys::isRepeat(xcb_key_press_event_t const& press) const {
  // A press that was on its way before the question is the reason why its key was found down.
  bool const isOlder = static_cast<std::int16_t>(press.sequence - asked_) < 0;
  return !isOlder && keys_.contains(press.detail);
}

}  // namespace morla::linux
