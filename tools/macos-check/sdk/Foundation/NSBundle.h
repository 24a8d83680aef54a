#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

#pragma clang assume_nonnull begin

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (nullable instancetype)bundleWithPath:(NSString*)path;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
@end

#pragma clang assume_nonnull end
