#include "platform/linux/input/RawPresses.h"

#include <xcb/xinput.h>

#include <cstring>

#include "platform/linux/input/XcbHandle.h"

namespace morla::linux {

std::optional<RawPresses> RawPresses::start(xcb_connection_t* connection) {
  auto const* const extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  constexpr std::uint16_t kMajor = 2;
  constexpr std::uint16_t kMinor = 2;  // from 2.1 on also while another client has the keyboard
  XcbOwned<xcb_input_xi_query_version_reply_t> const version(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, kMajor, kMinor), nullptr));
  if (version == nullptr || version->major_version < kMajor || version->minor_version < kMinor) return std::nullopt;
  struct {
    xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
  } const selection;
  XcbOwned<xcb_generic_error_t> const error(xcb_request_check(
      connection, xcb_input_xi_select_events_checked(connection, rootOf(connection), 1, &selection.head)));
  if (error != nullptr) return std::nullopt;
  return RawPresses(extension->major_opcode);
}

void RawPresses::note(xcb_generic_event_t const& event) {
  if ((event.response_type & 0x7FU) != XCB_GE_GENERIC) return;
  xcb_input_raw_key_press_event_t press;
  std::memcpy(&press, &event, sizeof press);
  if (press.extension != opcode_ || press.event_type != XCB_INPUT_RAW_KEY_PRESS) return;
  key_ = press.detail;
  time_ = press.time;
}

}  // namespace morla::linux
