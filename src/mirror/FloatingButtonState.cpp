#include "mirror/FloatingButtonState.h"

#include <string_view>

#include "platform/Environment.h"
#include "platform/NotificationNames.h"

namespace morla::mirror {
namespace {

constexpr std::string_view kWindowModeEnabled = "windowModeEnabled";
constexpr std::string_view kCheckModeEnabled = "checkModeEnabled";

void tick(std::weak_ptr<platform::MenuItem> const& item, bool isTicked) {
  if (auto const alive = item.lock()) alive->isTicked = isTicked;
}

}  // namespace

FloatingButtonState& FloatingButtonState::shared() {
  return platform::Environment::active().shared<FloatingButtonState>();
}

std::unique_ptr<FloatingButtonState> FloatingButtonState::make(platform::Environment& environment) {
  return std::make_unique<FloatingButtonState>(environment.platform().defaults, environment.notifications());
}

void FloatingButtonState::initializeDefaults() {
  if (!defaults_.hasValue(kWindowModeEnabled)) defaults_.set(kWindowModeEnabled, true);
  if (!defaults_.hasValue(kCheckModeEnabled)) defaults_.set(kCheckModeEnabled, false);
}

bool FloatingButtonState::windowModeEnabled() const {
  return defaults_.boolean(kWindowModeEnabled).value_or(false);
}

void FloatingButtonState::setWindowModeEnabled(bool value) {
  defaults_.set(kWindowModeEnabled, value);
  notifications_.post(notifications::kWindowModeChanged);
}

bool FloatingButtonState::checkModeEnabled() const {
  return defaults_.boolean(kCheckModeEnabled).value_or(false);
}

void FloatingButtonState::setCheckModeEnabled(bool value) {
  defaults_.set(kCheckModeEnabled, value);
  notifications_.post(notifications::kCheckModeChanged);
}

void FloatingButtonState::toggleWindowMode() {
  setWindowModeEnabled(!windowModeEnabled());
  tick(windowMenuItem, windowModeEnabled());
}

void FloatingButtonState::toggleCheckMode() {
  setCheckModeEnabled(!checkModeEnabled());
  tick(checkMenuItem, checkModeEnabled());
}

}  // namespace morla::mirror
