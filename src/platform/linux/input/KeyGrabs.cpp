#include "platform/linux/input/KeyGrabs.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/linux/input/XcbHandle.h"

namespace morla::linux {
namespace {

template <typename Set>
Set difference(Set const& from, Set const& minus) {
  Set result;
  std::ranges::set_difference(from, minus, std::inserter(result, result.end()));
  return result;
}

}  // namespace

KeyGrabs::KeyGrabs(xcb_connection_t* connection, std::shared_ptr<Keymap const> keymap, unsigned group)
    : connection_(connection), root_(rootOf(connection)), keymap_(std::move(keymap)), group_(group) {}

bool KeyGrabs::setWanted(std::vector<platform::WantedKeys> wanted) {
  std::lock_guard const lock(mutex_);
  auto const next = resolve(wanted);
  auto const added = difference(next, held_);
  auto const refused = grab(added);
  if (!refused.empty()) {
    ungrab(difference(added, refused));
    return false;
  }
  ungrab(difference(held_, next));
  held_ = next;
  wanted_ = std::move(wanted);
  return true;
}

std::size_t KeyGrabs::setKeymap(std::shared_ptr<Keymap const> keymap, unsigned group) {
  std::lock_guard const lock(mutex_);
  keymap_ = std::move(keymap);
  group_ = group;
  auto const next = resolve(wanted_);
  ungrab(difference(held_, next));
  auto const refused = grab(difference(next, held_));
  held_ = difference(next, refused);
  return refused.size();
}

void KeyGrabs::releaseAll() {
  std::lock_guard const lock(mutex_);
  xcb_ungrab_key(connection_, XCB_GRAB_ANY, root_, XCB_MOD_MASK_ANY);
  xcb_flush(connection_);
  held_.clear();
  wanted_.clear();
}

std::shared_ptr<Keymap const> KeyGrabs::keymap() const {
  std::lock_guard const lock(mutex_);
  return keymap_;
}

KeyGrabs::Set KeyGrabs::resolve(std::vector<platform::WantedKeys> const& wanted) const {
  Set set;
  for (auto const& keys : wanted) {
    auto const grabs = keymap_->grabs(keys, group_);
    set.insert(grabs.begin(), grabs.end());
  }
  return set;
}

KeyGrabs::Set KeyGrabs::grab(Set const& grabs) {
  // All of them are asked for before the first answer is waited for.
  std::vector<xcb_void_cookie_t> cookies;
  for (auto const& [key, modifiers] : grabs) {
    cookies.push_back(
        xcb_grab_key_checked(connection_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
  }
  Set refused;
  auto cookie = cookies.begin();
  for (auto const& each : grabs) {
    XcbOwned<xcb_generic_error_t> const error(xcb_request_check(connection_, *cookie++));
    if (error != nullptr) refused.insert(each);
  }
  return refused;
}

void KeyGrabs::ungrab(Set const& grabs) {
  for (auto const& [key, modifiers] : grabs) xcb_ungrab_key(connection_, key, root_, modifiers);
  xcb_flush(connection_);
}

}  // namespace morla::linux
