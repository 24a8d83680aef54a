#include "platform/linux/input/Xkb.h"

// A member in there is called as a word of C++.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

#include <cstring>

#include "platform/linux/input/XcbHandle.h"

namespace morla::linux {
namespace {

constexpr xcb_xkb_device_spec_t kCoreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

constexpr std::uint16_t stateOf(std::uint8_t modifiers, std::uint8_t group) {
  return static_cast<std::uint16_t>(modifiers | (group & 3U) << 13U);
}

template <typename Event>
Event as(xcb_generic_event_t const& event) {
  Event result;
  static_assert(sizeof result <= sizeof event);
  std::memcpy(&result, &event, sizeof result);
  return result;
}

}  // namespace

std::optional<Xkb> Xkb::start(xcb_connection_t* connection) {
  auto const* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  XcbOwned<xcb_xkb_use_extension_reply_t> const use(xcb_xkb_use_extension_reply(
      connection, xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
  if (use == nullptr || use->supported == 0) return std::nullopt;
  // Without the last two, keys that come by a grab do not tell the layout, or tell it as a modifier.
  constexpr std::uint32_t kFlags = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT |
                                   XCB_XKB_PER_CLIENT_FLAG_GRABS_USE_XKB_STATE |
                                   XCB_XKB_PER_CLIENT_FLAG_LOOKUP_STATE_WHEN_GRABBED;
  XcbOwned<xcb_xkb_per_client_flags_reply_t> const flags(xcb_xkb_per_client_flags_reply(
      connection, xcb_xkb_per_client_flags(connection, kCoreKeyboard, kFlags, kFlags, 0, 0, 0), nullptr));
  return Xkb(extension->first_event);
}

void Xkb::selectNotices(xcb_connection_t* connection) {
  constexpr std::uint16_t kState = XCB_XKB_STATE_PART_MODIFIER_STATE | XCB_XKB_STATE_PART_GROUP_STATE;
  constexpr std::uint16_t kMap = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                 XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                 XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
  constexpr std::uint16_t kKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = kKeyboard;
  details.newKeyboardDetails = kKeyboard;
  details.affectState = kState;
  details.stateDetails = kState;
  xcb_xkb_select_events_aux(
      connection, kCoreKeyboard,
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0,
      kMap, kMap, &details);
  xcb_flush(connection);
}

std::optional<KeyboardNotice> Xkb::notice(xcb_generic_event_t const& event) const {
  auto const type = event.response_type & 0x7FU;
  if (type == XCB_MAPPING_NOTIFY) {
    if (as<xcb_mapping_notify_event_t>(event).request == XCB_MAPPING_POINTER) return std::nullopt;
    return KeyboardNotice{true, std::nullopt};
  }
  if (type != firstEvent_) return std::nullopt;
  switch (event.pad0) {  // where the events of this extension say which they are
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
      return KeyboardNotice{true, std::nullopt};
    case XCB_XKB_STATE_NOTIFY: {
      auto const state = as<xcb_xkb_state_notify_event_t>(event);
      return KeyboardNotice{false, stateOf(state.mods, state.group)};
    }
    default:
      return std::nullopt;
  }
}

std::uint16_t Xkb::state(xcb_connection_t* connection) const {
  XcbOwned<xcb_xkb_get_state_reply_t> const reply(
      xcb_xkb_get_state_reply(connection, xcb_xkb_get_state(connection, kCoreKeyboard), nullptr));
  return reply == nullptr ? std::uint16_t{0} : stateOf(reply->mods, reply->group);
}

}  // namespace morla::linux
