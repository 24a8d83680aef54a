#include "platform/macos/AppKitWorkspace.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "base/MainThread.h"
#include "platform/macos/Text.h"

namespace morla::macos {
namespace {

platform::RunningApplication describe(NSRunningApplication* application) {
  return {application.processIdentifier, optionalUtf8(application.localizedName),
          optionalUtf8(application.bundleIdentifier)};
}

}  // namespace

// The workspace posts on a notification centre of its own, not on the default one.
AppKitWorkspace::AppKitWorkspace()
    : didActivate_([[NSWorkspace sharedWorkspace] notificationCenter], NSWorkspaceDidActivateApplicationNotification,
                   nil, [this] { activated_.call(); }) {}

std::vector<platform::RunningApplication> AppKitWorkspace::runningApplications() {
  assertIsMainThread();
  std::vector<platform::RunningApplication> running;
  for (NSRunningApplication* application in [[NSWorkspace sharedWorkspace] runningApplications]) {
    running.push_back(describe(application));
  }
  return running;
}

std::optional<platform::RunningApplication> AppKitWorkspace::frontmostApplication() {
  assertIsMainThread();
  NSRunningApplication* const front = [[NSWorkspace sharedWorkspace] frontmostApplication];
  if (front == nil) return std::nullopt;
  return describe(front);
}

Subscription AppKitWorkspace::onActivated(std::function<void()> observer) {
  assertIsMainThread();
  return activated_.add(std::move(observer));
}

void AppKitWorkspace::activate(platform::RunningApplication const& application) {
  assertIsMainThread();
  auto const process = static_cast<pid_t>(application.processIdentifier);
  NSRunningApplication* const running = [NSRunningApplication runningApplicationWithProcessIdentifier:process];
  if (@available(macOS 14.0, *)) {
    // Activation is cooperative from here on: a request, which needs no option and knows none that insists.
    [running activateWithOptions:0];
  } else {
    [running activateWithOptions:NSApplicationActivateIgnoringOtherApps];
  }
}

void AppKitWorkspace::activateSelf() {
  assertIsMainThread();
  if (@available(macOS 14.0, *)) {
    [[NSApplication sharedApplication] activate];
  } else {
    [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
  }
}

std::optional<platform::BundleInformation> AppKitWorkspace::bundleAt(std::string const& path) {
  assertIsMainThread();
  NSString* const folder = nsString(path);
  if (folder == nil) return std::nullopt;
  NSBundle* const bundle = [NSBundle bundleWithPath:folder];
  if (bundle == nil) return std::nullopt;
  // Not `objectForInfoDictionaryKey:`, which may answer in the user's language.
  NSDictionary<NSString*, id>* const information = bundle.infoDictionary;
  return platform::BundleInformation{optionalUtf8(bundle.bundleIdentifier), textOrNothing(information[@"CFBundleName"]),
                                     textOrNothing(information[@"CFBundleShortVersionString"])};
}

bool AppKitWorkspace::openUrl(std::string const& url) {
  assertIsMainThread();
  NSString* const text = nsString(url);
  if (text == nil) return false;
  NSURL* const address = [NSURL URLWithString:text];
  if (address == nil) return false;
  return [[NSWorkspace sharedWorkspace] openURL:address];
}

}  // namespace morla::macos
