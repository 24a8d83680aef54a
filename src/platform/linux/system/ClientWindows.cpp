#include "platform/linux/system/ClientWindows.h"

#include <algorithm>
#include <ranges>

namespace morla::linux {
namespace {

/// EWMH: who asks for an activation. 2 is a pager, that is, a direct wish of the user.
constexpr std::uint32_t kSourcePager = 2;

constexpr std::uint32_t kClientEvents = XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;

/// ICCCM, WM_HINTS: the flag that says that the `input` item counts.
constexpr std::uint32_t kInputHint = 1;

}  // namespace

ClientWindows::ClientWindows(XConnection& x) : x_(x) {
  findManager();
}

void ClientWindows::findManager() {
  auto const property = x_.atom(Atom::netSupportingWmCheck);
  auto const named = x_.items(x_.root(), property, XCB_ATOM_WINDOW);
  managerCheck_ = XCB_WINDOW_NONE;
  if (!named.empty()) {
    // The property stays behind when a manager dies; its window does not.
    x_.selectEvents(named[0], XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    auto const confirmed = x_.items(named[0], property, XCB_ATOM_WINDOW);
    if (confirmed == named) managerCheck_ = named[0];
  }
  // A manager's frames come, go and move all the time; without one these events are how windows are noticed.
  std::uint32_t const substructure = hasManager() ? 0 : XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  x_.selectEvents(x_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | substructure);
}

ClientWindow ClientWindows::read(xcb_window_t window) {
  ClientWindow client;
  client.window = window;
  auto const process = x_.items(window, x_.atom(Atom::netWmPid), XCB_ATOM_CARDINAL);
  if (!process.empty()) client.owner.processIdentifier = process[0];
  auto const names = x_.bytes(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
  auto const end = names.find('\0');
  client.windowInstance = names.substr(0, end);
  if (end != std::string::npos) client.owner.windowClass = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
  return client;
}

std::vector<xcb_window_t> ClientWindows::unmanagedStack() {
  auto const cookie = xcb_query_tree(x_.get(), x_.root());
  XcbReply<xcb_query_tree_reply_t> const tree(xcb_query_tree_reply(x_.get(), cookie, nullptr));
  std::vector<xcb_window_t> stack;
  if (!tree) return stack;
  auto const* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    auto const asked = xcb_get_window_attributes(x_.get(), children[i]);
    XcbReply<xcb_get_window_attributes_reply_t> const attributes(
        xcb_get_window_attributes_reply(x_.get(), asked, nullptr));
    bool const isClient = attributes && attributes->override_redirect == 0 &&
                          attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                          attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    if (isClient) stack.push_back(children[i]);
  }
  x_.keepArrivedEvents();
  return stack;
}

ClientWindows::Changes ClientWindows::refresh() {
  auto const list =
      hasManager() ? x_.items(x_.root(), x_.atom(Atom::netClientList), XCB_ATOM_WINDOW) : unmanagedStack();
  Changes changes;
  for (auto const window : windows_ | std::views::keys) {
    if (std::ranges::find(list, window) == list.end()) changes.gone.push_back(window);
  }
  for (auto const window : changes.gone) windows_.erase(window);
  for (auto const window : list) {
    if (windows_.contains(window)) continue;
    x_.selectEvents(window, kClientEvents);  // before reading: a later change is an event
    windows_.emplace(window, read(window));
    changes.come.push_back(window);
  }
  return changes;
}

void ClientWindows::reread(xcb_window_t window) {
  auto const found = windows_.find(window);
  if (found != windows_.end()) found->second = read(window);
}

ClientWindow const* ClientWindows::find(xcb_window_t window) const {
  auto const found = windows_.find(window);
  return found == windows_.end() ? nullptr : &found->second;
}

ClientWindow const* ClientWindows::focused() {
  XcbReply<xcb_get_input_focus_reply_t> const focus(
      xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
  auto const* client = around(focus ? focus->focus : 0U);
  x_.keepArrivedEvents();
  return client;
}

ClientWindow const* ClientWindows::around(xcb_window_t window) const {
  // Far deeper than any toolkit nests its windows.
  for (int level = 0; level < 32 && window > XCB_INPUT_FOCUS_POINTER_ROOT && window != x_.root(); ++level) {
    if (auto const* client = find(window)) return client;
    auto const cookie = xcb_query_tree(x_.get(), window);
    XcbReply<xcb_query_tree_reply_t> const tree(xcb_query_tree_reply(x_.get(), cookie, nullptr));
    if (!tree) break;
    window = tree->parent;
  }
  return nullptr;
}

std::optional<xcb_window_t> ClientWindows::topmostOf(WindowOwner const& owner) {
  auto const stack =
      hasManager() ? x_.items(x_.root(), x_.atom(Atom::netClientListStacking), XCB_ATOM_WINDOW) : unmanagedStack();
  for (auto const window : stack | std::views::reverse) {
    auto const* client = find(window);
    if (client != nullptr && client->owner == owner) return window;
  }
  for (auto const& [window, client] : windows_) {
    if (client.owner == owner) return window;
  }
  return std::nullopt;
}

void ClientWindows::activate(xcb_window_t window) {
  if (hasManager()) {
    constexpr std::uint32_t kToManager = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    x_.sendMessage(x_.root(), kToManager, window, x_.atom(Atom::netActiveWindow),
                   {kSourcePager, XCB_CURRENT_TIME, XCB_WINDOW_NONE});
  } else {
    constexpr std::uint32_t kAbove[] = {XCB_STACK_MODE_ABOVE};
    xcb_configure_window(x_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, kAbove);
    xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  }
  x_.flush();
}

void ClientWindows::giveFocus(xcb_window_t window, xcb_timestamp_t time) {
  auto const hints = x_.items(window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS);
  bool const refusesInput = hints.size() >= 2 && (hints[0] & kInputHint) != 0 && hints[1] == 0;
  if (!refusesInput) xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
  auto const protocols = x_.items(window, x_.atom(Atom::wmProtocols), XCB_ATOM_ATOM);
  if (std::ranges::find(protocols, x_.atom(Atom::wmTakeFocus)) != protocols.end()) {
    x_.sendMessage(window, XCB_EVENT_MASK_NO_EVENT, window, x_.atom(Atom::wmProtocols),
                   {x_.atom(Atom::wmTakeFocus), time});
  }
  x_.flush();
}

}  // namespace morla::linux
