#pragma once

#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)performBlock:(void (^)(void))block;
@end

#pragma clang assume_nonnull end
