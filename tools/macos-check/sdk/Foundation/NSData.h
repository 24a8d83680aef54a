#pragma once

#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

@interface NSData : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes RETURNS_INNER_POINTER;
@end

#pragma clang assume_nonnull end
