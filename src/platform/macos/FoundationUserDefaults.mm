#include "platform/macos/FoundationUserDefaults.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/Text.h"

namespace morla::macos {
namespace {

/// A property list keeps booleans and numbers apart, NSNumber itself does not: Core Foundation tells.
platform::DefaultsValue numberOrBoolean(NSNumber* value) {
  if (CFGetTypeID((__bridge CFTypeRef)value) == CFBooleanGetTypeID()) return static_cast<bool>(value.boolValue);
  if (CFNumberIsFloatType((__bridge CFNumberRef)value)) return value.doubleValue;
  return std::int64_t{value.longLongValue};
}

NSObject* _Nullable toObject(bool value) {
  return [NSNumber numberWithBool:value];
}
NSObject* _Nullable toObject(std::int64_t value) {
  return [NSNumber numberWithLongLong:value];
}
NSObject* _Nullable toObject(double value) {
  return [NSNumber numberWithDouble:value];
}
NSObject* _Nullable toObject(std::string const& value) {
  return nsString(value);
}

}  // namespace

std::optional<platform::DefaultsValue> FoundationUserDefaults::value(std::string_view key) const {
  NSString* const name = nsString(key);
  if (name == nil) return std::nullopt;
  id const object = [[NSUserDefaults standardUserDefaults] objectForKey:name];
  if (auto text = textOrNothing(object)) return platform::DefaultsValue(*std::move(text));
  if ([object isKindOfClass:[NSNumber class]]) return numberOrBoolean(static_cast<NSNumber*>(object));
  return std::nullopt;
}

void FoundationUserDefaults::store(std::vector<platform::DefaultsEntry> const& entries) {
  for (auto const& [key, value] : entries) {
    NSString* const name = nsString(key);
    NSObject* const object = std::visit([](auto const& held) { return toObject(held); }, value);
    if (name != nil && object != nil) [[NSUserDefaults standardUserDefaults] setObject:object forKey:name];
  }
}

}  // namespace morla::macos
