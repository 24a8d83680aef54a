#include "captureone/model/Cameras.h"

#include <algorithm>
#include <utility>

namespace morla::captureone {
namespace {

constexpr std::size_t kDefaultCount = 2;

SettingState at(char const* value, char const* available) {
  return {value, available};
}

/// The shop: three bodies that agree in nothing but the way they are asked. They differ in names, in the values that
/// they offer and in how they write an aperture.
std::vector<Camera> const& shop() {
  static std::vector<Camera> const bodies{
      {"mx1-20417",
       "MX-1 Studio",
       CameraLink::connected,
       CameraPower::on,
       {at("RAW", "RAW|RAW + JPEG|JPEG"), at("100", "50|100|200|400|800|1600|3200|6400"),
        at("f/8", "f/2.8|f/4|f/5.6|f/8|f/11|f/16|f/22"),
        at("1/125", "1/1000|1/500|1/250|1/125|1/60|1/30|1/15|1/8|1/4|1/2|1\"|2\"")}},
      {"r5-00388",
       "Roadrunner R5",
       CameraLink::connected,
       CameraPower::on,
       {at("RAW", "RAW|cRAW|JPEG"), at("200", "Auto|100|125|160|200|250|320|400|500|640|800|12800|Hi 1"),
        at("5.6", "1.8|2|2.8|4|5.6|8|11|16"), at("1/200", "1/8000|1/4000|1/2000|1/1000|1/500|1/200|1/100|1/50|Bulb")}},
      {"field-7",
       "Feldmann 54 « Atelier »",
       CameraLink::connected,
       CameraPower::on,
       {at("TIFF", "TIFF|RAW (16 bit)"), at("64", "64|100"), at("f/32", "f/11|f/16|f/22|f/32|f/45|f/64"),
        at("4 s", "1 s|2 s|4 s|8 s|15 s|30 s")}},
  };
  return bodies;
}

}  // namespace

std::vector<std::string> splitOffer(std::string_view joined) {
  std::vector<std::string> pieces;
  while (!joined.empty()) {
    auto const bar = std::min(joined.find('|'), joined.size());
    if (bar > 0) pieces.emplace_back(joined.substr(0, bar));
    joined.remove_prefix(std::min(bar + 1, joined.size()));
  }
  return pieces;
}

std::vector<std::string> Camera::offered(CameraSetting which) const {
  return splitOffer(setting(which).available);
}

Cameras::Cameras(Changes& changes)
    : changes_(changes), cameras_(shop().begin(), shop().begin() + static_cast<std::ptrdiff_t>(kDefaultCount)) {}

std::size_t Cameras::maximum() {
  return shop().size();
}

Camera const* Cameras::find(std::string_view identifier) const {
  auto const found = std::find_if(cameras_.begin(), cameras_.end(),
                                  [identifier](auto const& each) { return each.identifier == identifier; });
  return found == cameras_.end() ? nullptr : &*found;
}

Camera const* Cameras::current() const {
  return cameras_.empty() ? nullptr : &cameras_[current_];
}

bool Cameras::setCount(std::size_t count) {
  if (count > maximum()) return false;
  if (count == cameras_.size()) return true;
  while (cameras_.size() < count) cameras_.push_back(shop()[cameras_.size()]);
  cameras_.resize(count);
  if (current_ >= count) current_ = count == 0 ? 0 : count - 1;
  changes_.announce();
  return true;
}

bool Cameras::makeCurrent(std::size_t index) {
  if (index >= cameras_.size()) return false;
  if (index == current_) return true;
  current_ = index;
  changes_.announce();
  return true;
}

template <typename T>
bool Cameras::assign(T& place, T value) {
  if (place == value) return true;
  place = std::move(value);
  changes_.announce();
  return true;
}

bool Cameras::setLink(CameraLink link) {
  return !cameras_.empty() && assign(cameras_[current_].link, link);
}

bool Cameras::setPower(CameraPower power) {
  return !cameras_.empty() && assign(cameras_[current_].power, power);
}

bool Cameras::setName(std::string name) {
  return !cameras_.empty() && assign(cameras_[current_].name, std::move(name));
}

bool Cameras::setValue(CameraSetting which, std::string value) {
  if (cameras_.empty()) return false;
  return assign(cameras_[current_].settings[static_cast<std::size_t>(which)].value, std::move(value));
}

bool Cameras::setAvailable(CameraSetting which, std::string joined) {
  if (cameras_.empty()) return false;
  return assign(cameras_[current_].settings[static_cast<std::size_t>(which)].available, std::move(joined));
}

bool Cameras::dial(std::string_view identifier, CameraSetting which, std::string value) {
  auto const* found = find(identifier);
  if (found == nullptr || found->link != CameraLink::connected || found->power != CameraPower::on) return false;
  auto const offered = found->offered(which);
  if (std::find(offered.begin(), offered.end(), value) == offered.end()) return false;
  auto const index = static_cast<std::size_t>(found - cameras_.data());
  return assign(cameras_[index].settings[static_cast<std::size_t>(which)].value, std::move(value));
}

void Cameras::reset() {
  cameras_.assign(shop().begin(), shop().begin() + static_cast<std::ptrdiff_t>(kDefaultCount));
  current_ = 0;
  changes_.announce();
}

}  // namespace morla::captureone
