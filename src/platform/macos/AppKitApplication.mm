#include "platform/macos/AppKitApplication.h"

#import <AppKit/AppKit.h>

#include "platform/macos/Text.h"

namespace morla::macos {
namespace {

NSApplicationActivationPolicy nativePolicy(platform::ActivationPolicy policy) {
  switch (policy) {
    case platform::ActivationPolicy::regular:
      return NSApplicationActivationPolicyRegular;
    case platform::ActivationPolicy::accessory:
      return NSApplicationActivationPolicyAccessory;
  }
  return NSApplicationActivationPolicyRegular;
}

}  // namespace

void AppKitApplication::setActivationPolicy(platform::ActivationPolicy policy) {
  [[NSApplication sharedApplication] setActivationPolicy:nativePolicy(policy)];
}

int AppKitApplication::run() {
  [[NSApplication sharedApplication] run];
  return 0;
}

void AppKitApplication::terminate() {
  [[NSApplication sharedApplication] terminate:nil];
}

void AppKitApplication::onActionRequest(std::function<platform::ActionOutcome(std::string_view)>) {}

std::optional<std::string> MainBundle::identifier() const {
  return optionalUtf8([[NSBundle mainBundle] bundleIdentifier]);
}

std::string MainBundle::shortVersion() const {
  return textOrNothing([[NSBundle mainBundle] infoDictionary][@"CFBundleShortVersionString"]).value_or("");
}

}  // namespace morla::macos
