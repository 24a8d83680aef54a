#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

#pragma clang assume_nonnull begin

@interface NSAppleEventDescriptor : NSObject <NSCopying>
@property(nullable, readonly, copy) NSString* stringValue;
@end

DECLARE_EXTERN NSString* const NSAppleScriptErrorMessage;
DECLARE_EXTERN NSString* const NSAppleScriptErrorNumber;

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

#pragma clang assume_nonnull end
