#include "platform/macos/AppleScriptRunner.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Text.h"

namespace morla::macos {
namespace {

platform::ScriptError scriptError(NSDictionary<NSString*, id>* information) {
  platform::ScriptError error;
  id const number = information[NSAppleScriptErrorNumber];
  if ([number isKindOfClass:[NSNumber class]]) error.number = [static_cast<NSNumber*>(number) longLongValue];
  error.message = textOrNothing(information[NSAppleScriptErrorMessage]).value_or("");
  return error;
}

}  // namespace

platform::ScriptReply AppleScriptRunner::execute(std::string const& source) {
  @autoreleasepool {
    NSString* const text = nsString(source);
    if (text == nil) return {};
    NSAppleScript* const script = [[NSAppleScript alloc] initWithSource:text];
    if (script == nil) return {};
    NSDictionary<NSString*, id>* error = nil;
    NSAppleEventDescriptor* const result = [script executeAndReturnError:&error];
    if (error != nil) return {std::nullopt, scriptError(error)};
    return {optionalUtf8(result.stringValue), std::nullopt};
  }
}

}  // namespace morla::macos
