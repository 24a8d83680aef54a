#include "platform/linux/system/XConnection.h"

#include <QObject>
#include <QSocketNotifier>
#include <algorithm>
#include <cstring>
#include <string_view>

namespace morla::linux {
namespace {

constexpr std::string_view kAtomNames[] = {
    "_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING", "_NET_SUPPORTING_WM_CHECK", "_NET_WM_PID",
    "WM_PROTOCOLS",       "WM_TAKE_FOCUS",
};
static_assert(std::size(kAtomNames) == static_cast<std::size_t>(Atom::count));

/// In 32-bit units; a longer property is cut off, which no window list comes near.
constexpr std::uint32_t kPropertyLimit = 65536;

}  // namespace

bool XConnection::canOpen() {
  std::unique_ptr<xcb_connection_t, Disconnect> const connection(xcb_connect(nullptr, nullptr));
  return xcb_connection_has_error(connection.get()) == 0;
}

std::unique_ptr<XConnection> XConnection::open(MainLoop& loop) {
  int screen = 0;
  auto* connection = xcb_connect(nullptr, &screen);
  if (xcb_connection_has_error(connection) != 0) {
    xcb_disconnect(connection);
    return nullptr;
  }
  return std::unique_ptr<XConnection>(new XConnection(connection, screen, loop));
}

XConnection::XConnection(xcb_connection_t* connection, int screen, MainLoop& loop)
    : connection_(connection), loop_(loop) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (int i = 0; i < screen && screens.rem > 1; ++i) xcb_screen_next(&screens);
  root_ = screens.data->root;
  readAtoms();
  readable_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
  QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(), [this] {
    keepArrivedEvents();
    if (xcb_connection_has_error(connection_.get()) != 0) {
      readable_->setEnabled(false);
      if (lossHandler_) lossHandler_();
    }
  });
}

XConnection::~XConnection() = default;

void XConnection::readAtoms() {
  std::vector<xcb_intern_atom_cookie_t> cookies;
  for (auto const name : kAtomNames) {
    cookies.push_back(xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
  }
  for (auto const cookie : cookies) {
    XcbReply<xcb_intern_atom_reply_t> const reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    atoms_.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
  }
}

void XConnection::onEvents(std::function<void()> handler) {
  handler_ = std::move(handler);
  keepArrivedEvents();
}

void XConnection::keepArrivedEvents() {
  while (auto* event = xcb_poll_for_event(get())) {
    XcbReply<xcb_generic_event_t> owned(event);
    if (event->response_type != 0) arrived_.push_back(std::move(owned));  // 0 is the error of a request
  }
  if (arrived_.empty() || isCallPosted_ || !handler_) return;
  isCallPosted_ = true;
  loop_.post(life_.weak([this] {
    isCallPosted_ = false;
    handler_();
  }));
}

XcbReply<xcb_generic_event_t> XConnection::nextEvent() {
  if (arrived_.empty()) return nullptr;
  auto event = std::move(arrived_.front());
  arrived_.pop_front();
  return event;
}

void XConnection::roundTrip() {
  XcbReply<xcb_get_input_focus_reply_t> const reply(
      xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
  keepArrivedEvents();
}

std::vector<std::uint32_t> XConnection::items(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
  auto const cookie = xcb_get_property(get(), 0, window, property, type, 0, kPropertyLimit);
  XcbReply<xcb_get_property_reply_t> const reply(xcb_get_property_reply(get(), cookie, nullptr));
  keepArrivedEvents();
  if (!reply || reply->format != 32) return {};
  auto const size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  std::vector<std::uint32_t> result(size / sizeof(std::uint32_t));
  if (!result.empty()) std::memcpy(result.data(), xcb_get_property_value(reply.get()), size);
  return result;
}

std::string XConnection::bytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
  auto const cookie = xcb_get_property(get(), 0, window, property, type, 0, kPropertyLimit);
  XcbReply<xcb_get_property_reply_t> const reply(xcb_get_property_reply(get(), cookie, nullptr));
  keepArrivedEvents();
  if (!reply || reply->format != 8) return {};
  return {static_cast<char const*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

void XConnection::selectEvents(xcb_window_t window, std::uint32_t mask) {
  xcb_change_window_attributes(get(), window, XCB_CW_EVENT_MASK, &mask);
}

void XConnection::sendMessage(xcb_window_t receiver, std::uint32_t eventMask, xcb_window_t window, xcb_atom_t type,
                              std::vector<std::uint32_t> const& data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = type;
  std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), message.data.data32);
  xcb_send_event(get(), 0, receiver, eventMask, reinterpret_cast<char const*>(&message));
}

void XConnection::flush() {
  xcb_flush(get());
}

}  // namespace morla::linux
