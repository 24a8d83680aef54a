#pragma once

#include <Foundation/NSString.h>

#pragma clang assume_nonnull begin

typedef NSString* NSURLResourceKey;

@interface NSURL : NSObject <NSCopying>
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDir;
+ (nullable instancetype)URLWithString:(NSString*)URLString;
@property(nullable, readonly, copy) NSString* lastPathComponent;
@end

#pragma clang assume_nonnull end
