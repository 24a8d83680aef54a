#pragma once

#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
@end

#pragma clang assume_nonnull end
